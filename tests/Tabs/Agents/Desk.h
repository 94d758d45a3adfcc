#pragma once

#include "Fixture.h"
#include "StoreDesk.h"

#include "Core/TerminalApp.h"
#include "Hooks/HookInstaller.h"
#include "Hooks/HookListener.h"
#include "Platform/Fake/FakeFiles.h"
#include "Tabs/Agents/AgentsSource.h"

#include <QSignalSpy>

namespace velto {

/// A source with everything it needs, where Claude Code lists what the test sets.
struct Desk : StoreDesk {
    explicit Desk(std::unique_ptr<HookListener> with = nullptr)
        : listener(std::move(with))
    {
        tools.installed.insert(QStringLiteral("claude"));
        QObject::connect(&source, &VeltoSource::peekWanted, [this](const Peek &peek) { peeks.append(peek); });
    }

    void list(const QByteArray &json) { tools.answers[QStringLiteral("claude agents --json")] = {true, json, {}}; }
    /// A complete refresh in which Claude Code lists this.
    void refresh(const QByteArray &json)
    {
        list(json);
        source.refresh();
        background.finishAll();
    }
    /// One session of the listing, started this long ago.
    QByteArray session(const char *id, const char *state, std::chrono::seconds age = std::chrono::minutes(5)) const
    {
        const qint64 start = clock.wallTime().toMSecsSinceEpoch() - std::chrono::milliseconds(age).count();
        return "{\"id\":\"" + QByteArray(id) + "\",\"state\":\"" + state + "\",\"cwd\":\"/home/me/" + id
            + "\",\"startedAt\":" + QByteArray::number(start) + "}";
    }

    std::unique_ptr<HookListener> listener; ///< on its way to the source
    FakeFiles files;
    FakeFileTree tree{files};
    FakeApplications applications;
    FakeTerminals terminals;
    TerminalApp terminal{defaults, terminals, places};
    HookInstaller installer{files, clock, places.home, QString(48, u'a')};
    FakeMachine machine;
    AgentsSource source{{clock, background, tools, files, tree, applications, workspace, prefs, terminal, places, installer,
                         machine, std::move(listener)}};
    QSignalSpy changes{&source, &VeltoSource::changed};
};

} // namespace velto
