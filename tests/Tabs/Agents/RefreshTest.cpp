#include "RunTests.h"
#include "Tabs/Agents/Desk.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace velto;

/// What a listing changes, and which Peeks follow from one listing to the next.
class RefreshTest : public QObject {
    Q_OBJECT
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
};

static const Registered<RefreshTest> registered;
#include "RefreshTest.moc"
