#pragma once

#include "Core/HookInstaller.h"
#include "Core/HookListener.h"
#include "Core/Prefs.h"
#include "Core/TerminalApp.h"
#include "Platform/Fake/FakeBackground.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/FakeFiles.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Fake/FakeToolRunner.h"
#include "Platform/Places.h"
#include "Tabs/Agents/AgentsSource.h"

#include <QFile>
#include <QSignalSpy>

namespace velto {

inline QByteArray fixture(const char *name)
{
    QFile file(QStringLiteral(VELTO_FIXTURES "/agents/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A source on a desk of its own, where Claude Code lists what the test says.
struct Desk {
    Desk()
    {
        tools.installed.insert(QStringLiteral("claude"));
        source.onPeek = [this](const Peek &peek) { peeks.append(peek); };
    }

    void list(const QByteArray &json) { tools.answers[QStringLiteral("claude agents --json")] = {true, json, {}}; }
    /// A whole refresh in which Claude Code lists this.
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
    QStringList texts() const
    {
        QStringList result;
        for (const Peek &peek : peeks)
            result.append(peek.text);
        return result;
    }

    FakeClock clock;
    FakeBackground background;
    FakeToolRunner tools;
    FakeFiles files;
    FakeApplications applications;
    FakeWorkspace workspace;
    FakeDefaults defaults;
    FakeTerminals terminals;
    Places places{QStringLiteral("/home/me"), {}, {}, {}};
    Prefs prefs{defaults, places, clock};
    TerminalApp terminal{defaults, terminals, places};
    HookInstaller installer{files, clock, places.home, QString(48, u'a')};
    AgentsSource source{{clock, background, tools, files, applications, workspace, prefs, terminal, places, installer, nullptr}};
    QList<Peek> peeks;
    QSignalSpy changes{&source, &VeltoSource::changed};
};

} // namespace velto
