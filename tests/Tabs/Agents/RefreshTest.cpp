#include "RunTests.h"
#include "Tabs/Agents/AgentRows.h"
#include "Tabs/Agents/Desk.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace velto;

/// What a listing does to the source: the Peeks that the step from one to the next raises, the rows, and what their buttons do.
class RefreshTest : public QObject {
    Q_OBJECT

    static QByteArray waiting(const Desk &desk, int count)
    {
        QByteArrayList sessions;
        for (int i = 0; i < count; ++i)
            sessions.append(desk.session(("w" + QByteArray::number(i)).constData(), "blocked"));
        return "[" + sessions.join(',') + "]";
    }
    static QVariant value(QAbstractItemModel *model, int row, const QByteArray &role)
    {
        return model->data(model->index(row, 0), model->roleNames().key(role));
    }

private Q_SLOTS:
    void failureKeepsTheAgentsAndAbsenceEmptiesThem()
    {
        Desk desk;
        desk.prefs.set(Prefs::Module::Agents, false);
        desk.source.refresh();
        QCOMPARE(desk.background.pending(), 0);
        QCOMPARE(desk.source.state(), SourceState::loading());
        desk.prefs.set(Prefs::Module::Agents, true);
        desk.refresh("[" + desk.session("a", "working") + "]");
        QCOMPARE(desk.source.state(), SourceState::ready());
        QCOMPARE(desk.source.badge(), 1);

        desk.refresh("nonsense");
        QCOMPARE(desk.source.state().message(),
                 u"Couldn't list Claude sessions. `claude agents` needs Claude Code 2.1 or newer; try updating it."_s);
        QCOMPARE(desk.source.agents().size(), 1);

        desk.tools.installed.clear();
        desk.source.refresh();
        QCOMPARE(desk.background.pending(), 0);
        QCOMPARE(desk.source.state().reason(), u"Claude Code isn't installed on this Mac."_s);
        QVERIFY(desk.source.agents().isEmpty());
        QVERIFY(desk.peeks.isEmpty());
    }

    void sameWorldIsSilent()
    {
        Desk desk;
        const QByteArray listing = "[" + desk.session("a", "working") + "," + desk.session("b", "blocked") + "]";
        desk.refresh(listing);
        const qsizetype before = desk.changes.size();
        QSignalSpy moved(desk.source.sessionRows(), &QAbstractItemModel::dataChanged);
        desk.refresh(listing);
        desk.clock.advance(59s);
        desk.refresh(listing);
        QCOMPARE(desk.changes.size(), before);
        QCOMPARE(moved.size(), 0);
        // A minute later the ages change, and only their rows do.
        desk.clock.advance(1s);
        desk.refresh(listing);
        QCOMPARE(desk.changes.size(), before);
        QCOMPARE(moved.size(), 1);
        desk.refresh("[" + desk.session("a", "working") + "]");
        QCOMPARE(desk.changes.size(), before + 1);
    }

    /// One listing at a time, so that none is outdated; requests made meanwhile lead to another, begun after them.
    void aRefreshDuringAListingFollowsIt()
    {
        Desk desk;
        desk.source.refresh();
        for (int i = 0; i < 50; ++i) {
            HookEvent event;
            event.event = u"Other"_s;
            desk.source.hook(event);
        }
        QCOMPARE(desk.background.pending(), 1);
        desk.list("[" + desk.session("first", "working") + "]");
        desk.background.finish();
        QCOMPARE(desk.source.agents().size(), 1);
        QCOMPARE(desk.source.agents().front().id, u"first"_s);
        QCOMPARE(desk.background.pending(), 1);
        desk.list("[" + desk.session("second", "working") + "]");
        desk.background.finish();
        QCOMPARE(desk.source.agents().size(), 1);
        QCOMPARE(desk.source.agents().front().id, u"second"_s);
        QCOMPARE(desk.tools.ran.size(), 2);
        QCOMPARE(desk.background.pending(), 0);
    }

    void mayBeDestroyedWhileAListingRuns()
    {
        FakeBackground background;
        FakeToolRunner tools;
        FakeFiles files;
        {
            Desk desk;
            HookInstaller installer(files, desk.clock, desk.places.home, QString(48, u'a'));
            auto source = std::make_unique<AgentsSource>(
                AgentsSource::Needs{desk.clock, background, tools, files, desk.tree, desk.applications, desk.workspace,
                                    desk.prefs, desk.terminal, desk.places, installer, desk.machine, nullptr});
            tools.installed.insert(u"claude"_s);
            source->refresh();
            source->scan();
            source.reset();
            QCOMPARE(background.pending(), 2);
        }
        background.finishAll();
        QVERIFY(tools.ran.contains(u"claude agents --json"_s));
    }

    void onlyTheStepFromWorkingToBlockedNeedsYou()
    {
        Desk desk;
        const QByteArray blocked = "[" + desk.session("a", "blocked") + "]";
        const QByteArray working = "[" + desk.session("a", "working") + "]";
        desk.refresh(blocked);
        desk.refresh(blocked);
        QVERIFY(desk.peeks.isEmpty());
        desk.refresh(working);
        desk.refresh(blocked);
        desk.refresh(working);
        desk.refresh(blocked);
        QCOMPARE(desk.texts(), (QStringList{u"a needs you"_s, u"a needs you"_s}));
        QCOMPARE(desk.peeks[0].symbol, u"hand.raised.fill"_s);
        QCOMPARE(desk.peeks[0].tone, Peek::Tone::Warn);
        QCOMPARE(desk.peeks[0].cwd, u"/home/me/a"_s);
        QVERIFY(!desk.peeks[0].isQuestion());
        desk.refresh(working);
        desk.refresh("[" + desk.session("a", "failed") + "]");
        QCOMPARE(desk.peeks.size(), 2);
    }

    void aWorkingSessionThatLeavesHasFinished()
    {
        Desk desk;
        desk.refresh("[" + desk.session("a", "working") + "," + desk.session("b", "blocked") + "]");
        desk.refresh("nonsense"); // no listing, no change
        QVERIFY(desk.peeks.isEmpty());
        desk.refresh("[" + desk.session("a", "done") + "]");
        QCOMPARE(desk.texts(), QStringList{u"a finished"_s});
        QCOMPARE(desk.peeks[0].symbol, u"checkmark.circle.fill"_s);
        QCOMPARE(desk.peeks[0].tone, Peek::Tone::Good);
    }

    void scanFindsToolsAlsoWithoutClaude()
    {
        Desk desk;
        desk.tools.installed.clear();
        desk.tools.answers.insert(u"ps -axo etime=,args="_s, {true, "05:00 bin/aider\n05:00 bin/aider", {}});
        desk.source.scan();
        desk.source.scan();
        QVERIFY(desk.source.scanning());
        QCOMPARE(desk.background.pending(), 1);
        desk.background.finishAll();
        QVERIFY(!desk.source.scanning());
        QCOMPARE(desk.source.scannedText(), u"Scanned just now"_s);
        QCOMPARE(desk.source.tools().size(), 1);
        QCOMPARE(desk.source.toolRows()->data(desk.source.toolRows()->index(0, 0), Qt::UserRole + 3), u"running 5m"_s);
        QCOMPARE(desk.source.state(), SourceState::loading());
        desk.clock.advance(12min);
        QCOMPARE(desk.source.scannedText(), u"Scanned 12 min ago"_s);
    }

    void aDayOldOrDismissedSessionIsStale()
    {
        Desk desk;
        const QByteArray listing = "[" + desk.session("old", "blocked", 24h) + "," + desk.session("new", "failed", 24h - 1s) + ","
            + desk.session("busy", "working", 48h) + "]";
        desk.refresh(listing);
        QCOMPARE(desk.source.runningCount(), 1);
        QCOMPARE(desk.source.waiting().front().id, u"new"_s);
        QCOMPARE(desk.source.staleCount(), 1);

        const qsizetype before = desk.changes.size();
        desk.clock.advance(1s);
        desk.refresh(listing); // the same listing, yet another world
        QCOMPARE(desk.changes.size(), before + 1);
        QCOMPARE(desk.source.waitingCount(), 0);
        QCOMPARE(desk.source.staleCount(), 2);
    }

    void dismissedSessionsStayHidden()
    {
        Desk desk;
        desk.refresh(waiting(desk, 3));
        qsizetype before = desk.changes.size();
        desk.source.dismiss(u"w1"_s);
        desk.clock.runPosted();
        QCOMPARE(desk.changes.size(), ++before);
        QCOMPARE(desk.source.waitingCount(), 2);
        QCOMPARE(desk.source.sessionRows()->rowCount() - desk.source.runningCount(), 2);
        desk.source.dismiss(u"w2"_s);
        desk.clock.runPosted();
        QCOMPARE(desk.source.waitingCount(), 1);
        QCOMPARE(desk.changes.size(), ++before);
        desk.source.clearWaiting();
        QCOMPARE(desk.changes.size(), ++before);
        QCOMPARE(desk.prefs.dismissedAgentIDs(), (QSet<QString>{u"w0"_s, u"w1"_s, u"w2"_s}));
        desk.source.clearWaiting();
        QCOMPARE(desk.changes.size(), ++before); // nothing left to hide, announced all the same
        desk.refresh(waiting(desk, 3));
        QCOMPARE(desk.source.staleCount(), 3);
    }

    void rowsSayWhatTheSessionDoes()
    {
        Desk desk;
        desk.files.contents.insert(u"/home/me/.claude/jobs/a/state.json"_s, R"({"detail":"reading %1"})");
        desk.refresh(
            QByteArray("[{\"id\":\"a\",\"name\":\"A %2 <b>\",\"cwd\":\"/home/me/proj\",\"state\":\"working\",\"startedAt\":")
            + QByteArray::number(desk.clock.wallTime().addSecs(-3 * 3600).toMSecsSinceEpoch())
            + ",\"sessionId\":\"AEFE0D0B-131d-43a7-b83d-daf04de24178\"},"
              "{\"id\":\"b\",\"state\":\"blocked\",\"startedAt\":1e300,\"sessionId\":\"x\"}]");
        QAbstractItemModel *rows = desk.source.sessionRows();
        QCOMPARE(value(rows, 0, "stateWord"), u"Thinking…"_s);
        QCOMPARE(value(rows, 0, "detail"), u"reading %1"_s);
        QCOMPARE(value(rows, 0, "age"), u"3 h"_s);
        QCOMPARE(value(rows, 0, "canResume"), true);
        QCOMPARE(value(rows, 0, "spoken"), u"A %2 <b>, working, in proj, started 3 h ago"_s);
        QCOMPARE(value(rows, 1, "stateWord"), u"Waiting"_s);
        QCOMPARE(value(rows, 1, "canResume"), false);
        QCOMPARE(value(rows, 1, "folder"), QString());
        QCOMPARE(value(rows, 1, "spoken"), u"b, waiting for you, started just now"_s);

        desk.source.resume(u"a"_s);
        desk.source.resume(u"b"_s);
        desk.source.resume(u"gone"_s);
        QCOMPARE(desk.terminals.launched.size(), 1);
        QVERIFY(desk.terminals.launched[0].second.endsWith(u"claude --resume AEFE0D0B-131d-43a7-b83d-daf04de24178"_s));
        desk.source.openFolder(u"a"_s);
        desk.source.openFolder(u"b"_s);
        QCOMPARE(desk.workspace.shown, QStringList{u"/home/me/proj"_s});
    }
};

static const Registered<RefreshTest> registered;
#include "RefreshTest.moc"
