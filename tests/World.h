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

/// A complete fake desktop, with the Hub on top. The modules that call outside tools by themselves are off at first.
struct World {
    explicit World(QHash<QString, QByteArray> contents = {});
    ~World();

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

    Desktop prepared();
    /// What `claude agents --json` prints from now on.
    void setListing(const QByteArray &json);
    /// A listing with this many sessions of each kind, all started a minute ago.
    void setSessions(int working, int blocked);
    void refresh();
    /// A todo that is due so many days from today.
    void addTodo(const QString &title, int days, qint64 prio = 2, const QString &project = {});
    /// A meeting with a link that the user typed in, "Review", so many seconds away.
    void meetIn(int seconds);
    /// Connects to a hub that answers with this from now on.
    void connectHub(const QByteArray &snapshot);
    void wait(int milliseconds) { clock.advance(std::chrono::milliseconds(milliseconds)); }
};

} // namespace velto
