#pragma once

#include "StoreDesk.h"

#include "Feeds/Signals/SignalsSource.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace velto {

using namespace Qt::StringLiterals;

/// A source with Claude Code's logs, one repository and the tools; all three modules are on.
struct SignalsDesk : StoreDesk {
    SignalsDesk()
    {
        for (const Prefs::Module module : {Prefs::Module::Usage, Prefs::Module::Mcp, Prefs::Module::Repos})
            prefs.set(module, true);
        QDir(folder.path()).mkpath(u"logs"_s);
        QDir(folder.path()).mkpath(u"src/app/.git"_s);
        prefs.setRepoRoots({folder.filePath(u"missing"_s), folder.filePath(u"src"_s)});
        tools.installed = {u"claude"_s, u"git"_s};
        setListing("a: b - ✔ Connected\nc: d - ! Needs authentication\ne: f - ✘ Failed to connect\n");
        setStatus("# branch.head main\n? new\n");
    }

    void setListing(const QByteArray &out, const QString &err = {})
    {
        tools.answers.insert(u"claude mcp list"_s, {err.isEmpty(), out, err});
    }
    void setStatus(const QByteArray &out)
    {
        const QString git = u"git -C "_s + folder.filePath(u"src/app"_s);
        tools.answers.insert(git + u" config --list --show-scope --null"_s, {true, {}, {}});
        tools.answers.insert(git + u" ls-files --stage --full-name -z -- :/"_s, {true, {}, {}});
        tools.answers.insert(git + u" status --porcelain=v2 --branch"_s, {true, out, {}});
    }
    void refresh(bool force = false)
    {
        source->refresh(force);
        background.finishAll();
    }
    void wait(int seconds) { clock.advance(std::chrono::seconds(seconds)); }
    /// How often the logs, the repositories and the servers were read.
    QList<qsizetype> read() const
    {
        const auto ran = [this](QLatin1StringView words) {
            return std::ranges::count_if(tools.ran, [words](const QString &line) { return line.contains(words); });
        };
        return {usageRead, ran(" status "_L1), ran("claude"_L1)};
    }

    QTemporaryDir folder;
    TokenUsage usage{10, 20, 3000, 400, 2, {}};
    qsizetype usageRead = 0;
    std::unique_ptr<SignalsSource> source = std::make_unique<SignalsSource>(
        SignalsSource::Needs{clock, background, tools, prefs, folder.filePath(u"logs"_s), [this](const QDateTime &) {
                                 ++usageRead;
                                 return usage;
                             }});
    QSignalSpy changes{source.get(), &SignalsSource::changed};
};

} // namespace velto
