#pragma once

#include "FakeHttp.h"

#include "Hooks/HookListener.h"
#include "Hub/Stores.h"
#include "Platform/Fake/FakeBackground.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/FakeFiles.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Fake/FakeToolRunner.h"
#include "Platform/Fake/InlineBackground.h"
#include "Platform/FileWriter.h"
#include "Platform/Places.h"
#include "Platform/Posix/PosixFileTree.h"

namespace velto {

/// A whole desktop that does as it is told, and the Hub on top of it. The modules that ask outside tools of their own accord
/// are off to begin with.
struct World {
    explicit World(QHash<QString, QByteArray> contents = {})
        : initialFiles(std::move(contents))
    {
    }

    const QHash<QString, QByteArray> initialFiles; ///< by path; what the sources read while they are made
    FakeClock clock;
    FakeBackground background;
    InlineBackground lane;
    FileWriter writer{lane, clock};
    FakeToolRunner tools;
    FakeFiles files;
    PosixFileTree fileTree;
    FakeDefaults defaults;
    FakeKeychain keychain;
    FakeClipboard clipboard;
    FakeApplications applications;
    FakeAccessibility accessibility;
    FakeWorkspace workspace;
    FakeTerminals terminals;
    FakeMachine machine;
    FakeMediaPlayers players;
    FakeSounds sounds;
    FakeFolderPanel folderPanel;
    FakeVideoPlayer videoPlayer;
    FakeHttp http;
    Places places{QStringLiteral("/home/me"),
                  {},
                  QStringLiteral("/home/me/data"),
                  QStringLiteral("/tmp"),
                  QStringLiteral("/home/me/Downloads")};
    QuillboxMode quillboxMode; ///< counts from the next reconnect on
    Stores stores{prepared(), nullptr, [this] { return quillboxMode; }};
    Prefs &prefs = stores.prefs;
    HookInstaller &installer = stores.installer;
    TerminalApp &terminal = stores.terminal;
    QuillboxSource &quillbox = stores.quillbox;
    TodosSource &todos = stores.todos;
    AgentsSource &agents = stores.agents;
    SignalsSource &signalsSource = stores.signalsSource;
    EverydaySource &everyday = stores.everyday;
    WorkSource &work = stores.work;
    GlanceSource &glances = stores.glances;
    HomeSource &home = stores.home;
    ConnectSource &connectTab = stores.connectTab;
    Hub &hub = stores.hub;

    Desktop prepared()
    {
        files.contents = initialFiles;
        tools.installed.insert(QStringLiteral("claude"));
        setListing("[]");
        defaults.set(QStringLiteral("modulesOff"),
                     QStringList{QStringLiteral("calendar"), QStringLiteral("prs"), QStringLiteral("work"),
                                 QStringLiteral("media"), QStringLiteral("usage"), QStringLiteral("mcp"),
                                 QStringLiteral("repos")});
        defaults.set(QStringLiteral("hookToken"), QStringLiteral("token"));
        return {clock,   background, tools,     files,       writer,       fileTree,      defaults,
                http,    keychain,   clipboard, workspace,   applications, accessibility, terminals,
                machine, players,    sounds,    folderPanel, videoPlayer,  places};
    }
    /// What `claude agents --json` prints from now on.
    void setListing(const QByteArray &json) { tools.answers.insert(QStringLiteral("claude agents --json"), {true, json, {}}); }
    /// A listing with this many sessions of each kind, all started a minute ago.
    void setSessions(int working, int blocked)
    {
        QByteArray json = "[";
        for (int i = 0; i < working + blocked; ++i) {
            json += i ? "," : "";
            json += QStringLiteral(R"({"id":"s%1","name":"session %1","state":"%2","startedAt":%3,"cwd":"/home/me/p%1"})")
                        .arg(i)
                        .arg(i < working ? QStringLiteral("working") : QStringLiteral("blocked"))
                        .arg(clock.wallTime().toMSecsSinceEpoch() - 60'000 + i)
                        .toUtf8();
        }
        setListing(json + "]");
    }
    void refresh()
    {
        hub.refresh(false);
        background.finishAll();
    }
    /// Connects to a hub that answers with this from now on.
    void connectHub(const QByteArray &snapshot)
    {
        http.answer = [snapshot](const HttpRequest &) { return HttpReply{200, snapshot, {}}; };
        quillboxMode = QuillboxMode::hub(QUrl(QStringLiteral("https://hub.example.net")), QStringLiteral("token"));
        quillbox.reconnect();
        background.finishAll();
    }
    void wait(int milliseconds) { clock.advance(std::chrono::milliseconds(milliseconds)); }
};

} // namespace velto
