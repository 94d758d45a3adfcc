#include "Feeds/Signals/Desk.h"
#include "RunTests.h"

#include <limits>

namespace velto {

/// When each signal is read, and what the user sees of it.
class SignalsSourceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsWhatWasRead()
    {
        SignalsDesk desk;
        const SignalsSource &source = *desk.source;
        for (const SourceState &state : {source.usageState(), source.reposState(), source.mcpState()})
            QCOMPARE(state, SourceState::loading());
        desk.refresh();
        for (const SourceState &state : {source.usageState(), source.reposState(), source.mcpState()})
            QCOMPARE(state, SourceState::ready());
        QCOMPARE(source.tokens(), desk.usage);
        QCOMPARE(source.tokensUsed(), 430); // all but what was re-read
        QCOMPARE(source.repos().size(), 1);
        QCOMPARE(source.reposNeedingWorkCount(), 1);
        QCOMPARE(source.mcp().size(), 3);
        QCOMPARE(source.mcpFailing(), QList<MCPServer>({source.mcp().at(2)}));
        QCOMPARE(source.mcpNeedsAuth(), QList<MCPServer>({source.mcp().at(1)}));
        QCOMPARE(desk.source->mcpRows()->rowCount(), 3);
        QCOMPARE(desk.changes.count(), 3);
        desk.refresh(true);
        QCOMPARE(desk.changes.count(), 3); // only changes are announced
        desk.source->retryMcp();
        QVERIFY(desk.source->mcpRetrying());
        desk.background.finishAll();
        QVERIFY(!desk.source->mcpRetrying());
        QCOMPARE(desk.changes.count(), 5);

        desk.usage.input = std::numeric_limits<qint64>::max();
        desk.setStatus("# branch.head main\n# branch.ab +0 -4\n");
        desk.refresh(true);
        QCOMPARE(source.tokensUsed(), std::numeric_limits<qint64>::max());
        QCOMPARE(source.reposNeedingWorkCount(), 0); // nothing to save
    }

    void readsEachAtItsOwnPace()
    {
        SignalsDesk desk;
        const auto row = [&desk](int seconds, const QList<qsizetype> &read, bool force = false) {
            desk.wait(seconds);
            desk.refresh(force);
            QCOMPARE(desk.read(), read);
        };
        row(0, {1, 1, 1});
        row(299, {1, 1, 1});
        row(1, {2, 2, 1});
        row(299, {2, 2, 1});
        row(1, {3, 3, 2});
        row(100, {4, 4, 3}, true); // and the interval starts again
        row(299, {4, 4, 3});
        // A clock set back causes no wait; then the machine sleeps.
        for (const auto &[hours, read] : {std::pair(-30 * 24, QList<qsizetype>({5, 5, 4})), {8, {6, 6, 5}}}) {
            desk.clock.setWallTime(desk.clock.wallTime().addSecs(hours * 3600));
            row(0, read);
            row(0, read);
        }
    }

    void triesAFailureAgainAtItsTurnOnly()
    {
        SignalsDesk desk;
        desk.setListing({}, u"timed out after 60 s"_s);
        desk.source->refresh(false);
        desk.wait(62); // the reading took this long
        desk.background.finishAll();
        const auto failed = SourceState::failed(u"Couldn't check MCP servers (claude mcp list: timed out after 60 s)."_s);
        QCOMPARE(desk.source->mcpState(), failed);
        QVERIFY(desk.source->mcp().isEmpty());
        desk.setListing("a: b - ✔\n");
        desk.wait(537);
        desk.refresh();
        QCOMPARE(desk.source->mcpState(), failed);
        desk.wait(1);
        desk.refresh();
        QCOMPARE(desk.source->mcpState(), SourceState::ready());
        desk.setListing({}, u"x"_s);
        desk.refresh(true);
        QVERIFY(desk.source->mcp().isEmpty()); // a failure removes the list
        QCOMPARE(desk.source->mcpRows()->rowCount(), 0);
    }

    void saysWhatIsMissing()
    {
        SignalsDesk desk;
        desk.refresh();
        desk.tools.installed.clear();
        desk.refresh(true);
        const auto noGit = SourceState::unavailable(u"Git isn't installed."_s, u"Install the Xcode Command Line Tools."_s);
        const auto noClaude =
            SourceState::unavailable(u"Claude Code isn't installed."_s, u"MCP health comes from `claude mcp list`."_s);
        QCOMPARE(desk.source->usageState(), SourceState::ready()); // old logs are read all the same
        QCOMPARE(desk.source->reposState(), noGit);
        QCOMPARE(desk.source->repos().size(), 1); // the repository stays
        QCOMPARE(desk.source->mcpState(), noClaude);
        QCOMPARE(desk.read(), QList<qsizetype>({2, 1, 1}));

        for (const char *name : {"src", "logs"})
            QDir(desk.folder.filePath(QLatin1StringView(name))).removeRecursively();
        desk.refresh(true);
        QCOMPARE(desk.source->usageState(),
                 SourceState::unavailable(u"No Claude Code logs on this Mac."_s, u"Install Claude Code to see usage."_s));
        QCOMPARE(desk.usageRead, 2);
        QCOMPARE(
            desk.source->reposState(),
            SourceState::unavailable(u"No code folders chosen."_s, u"Add the folders you keep repos in, in the Connect tab."_s));
        QVERIFY(desk.source->repos().isEmpty());
    }

    void leavesAloneWhatIsOff()
    {
        SignalsDesk desk;
        desk.prefs.set(Prefs::Module::Mcp, false);
        desk.refresh(true);
        QCOMPARE(desk.source->mcpState(), SourceState::loading());
        desk.prefs.set(Prefs::Module::Repos, false);
        desk.prefs.set(Prefs::Module::Usage, false);
        desk.refresh(true);
        QCOMPARE(desk.read(), QList<qsizetype>({1, 1, 0}));
        QCOMPARE(desk.source->repos().size(), 1);
        QCOMPARE(desk.source->reposState(), SourceState::ready());
        desk.prefs.set(Prefs::Module::Mcp, true);
        desk.refresh(); // due at once: no interval ran while it was off
        QCOMPARE(desk.source->mcpState(), SourceState::ready());
    }

    void looksAtNoFolderBeforeTheUserKnows()
    {
        SignalsDesk desk;
        FakeDefaults untouched;
        const Places places{desk.folder.path(), {}, {}, {}};
        Prefs prefs(untouched, places, desk.clock); // finds "src" in the home folder
        SignalsSource source({desk.clock, desk.background, desk.tools, prefs, {}, {}});
        for (const bool welcomed : {false, true}) {
            prefs.setOnboarded(welcomed);
            source.refresh(true);
            desk.background.finishAll();
            QCOMPARE(source.repos().size(), welcomed ? 1 : 0);
            QCOMPARE(source.reposState(),
                     welcomed ? SourceState::ready()
                              : SourceState::unavailable(u"Your code folders aren't watched yet."_s,
                                                         u"Finish the welcome, or add a folder in the Connect tab."_s));
        }
    }

    void followsAReadingUnderWayWithAnotherIfForced()
    {
        SignalsDesk desk;
        desk.source->refresh(false);
        desk.prefs.setRepoRoots({desk.folder.filePath(u"missing"_s)});
        desk.source->refresh(true);
        desk.source->retryMcp();
        QCOMPARE(desk.background.pending(), 3); // at most one of each at a time
        desk.background.finish(1); // the walk through folders that are no longer selected
        QVERIFY(desk.source->repos().isEmpty());
        QCOMPARE(desk.source->reposState(), SourceState::loading());
        desk.background.finish(1); // the servers as they were
        QVERIFY(desk.source->mcpRetrying());
        desk.background.finishAll();
        QCOMPARE(desk.read(), QList<qsizetype>({2, 0, 2}));
        QCOMPARE(desk.source->reposState().reason(), u"No code folders chosen."_s);
        QVERIFY(!desk.source->mcpRetrying());

        SignalsDesk another;
        another.source->refresh(false);
        another.source.reset();
        another.background.finishAll();
        QCOMPARE(another.read().at(1), 0); // the walk ends with its source
    }
};

const Registered<SignalsSourceTest> registered;

} // namespace velto

#include "SourceTest.moc"
