#include "Feeds/Work/WorkSource.h"
#include "FakeHttp.h"
#include "Fixture.h"
#include "Platform/Posix/PosixToolRunner.h"
#include "RunTests.h"
#include "StoreDesk.h"

#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

const QString kGh = u"gh search prs --review-requested=@me --state=open --json title,url,repository --limit 20"_s;
const QString kNotSignedIn = u"The GitHub CLI isn't signed in. Run `gh auth login`."_s;

const QHash<QString, QString> kTokens{
    {u"Velto.linear"_s, u"secret"_s}, {u"Velto.jira"_s, u"secret"_s}, {u"Velto.slack"_s, u"secret"_s}};

QStringList ids(const QList<WorkItem> &items)
{
    QStringList result;
    for (const WorkItem &item : items)
        result.append(item.id);
    return result;
}

} // namespace

/// When each group is read, and what the user sees of it.
class WorkSourceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void asksOnceInFiveMinutesUnlessForced()
    {
        Desk desk;
        desk.keychain.entries.insert(u"Velto.linear"_s, u"t"_s);
        const auto row = [&desk](int milliseconds, qsizetype asked, bool force = false) {
            desk.clock.advance(std::chrono::milliseconds(milliseconds));
            desk.refresh(force);
            QCOMPARE(std::pair(desk.tools.ran.size(), desk.http.requests.size()), std::pair(asked, asked));
        };
        row(0, 1);
        row(299'999, 1);
        row(0, 2, true); // and the five minutes start again
        row(299'999, 2);
        desk.tools.answers.clear();
        desk.answer(503);
        row(1, 3);
        row(0, 3); // a failure isn't retried sooner either
    }

    void withoutToolsOrTokensSaysHowToGetThem()
    {
        Desk desk;
        QCOMPARE(desk.source->prState(), SourceState::loading());
        QCOMPARE(desk.source->workState(), SourceState::loading());
        desk.keychain.entries.insert(u"Velto.linear"_s, u"t"_s);
        desk.refresh();
        desk.tools.installed.clear();
        desk.keychain.entries.clear();
        desk.refresh();
        QCOMPARE(
            desk.source->prState(),
            SourceState::unavailable(u"The GitHub CLI isn't installed."_s, u"Run `brew install gh`, then `gh auth login`."_s));
        QCOMPARE(desk.source->prs().size(), 3); // they stay
        QCOMPARE(desk.source->workState(),
                 SourceState::unavailable(u"No work tools connected."_s, u"Connect Linear, Jira or Slack in the Connect tab."_s));
        QVERIFY(desk.source->issues().isEmpty());
        QCOMPARE(desk.http.requests.size(), 1);
    }

    void aLockedKeyringIsFollowed()
    {
        Desk desk;
        desk.keychain.entries.insert(u"Velto.linear"_s, u"t"_s);
        desk.keychain.setLocked(true);
        desk.refresh();
        QVERIFY(desk.source->workState().isLocked());
        desk.source->unlock();
        QCOMPARE(desk.keychain.unlocked, 1);
        desk.keychain.setLocked(false);
        desk.background.finishAll();
        QVERIFY(!desk.source->workState().isLocked());
        QCOMPARE(desk.http.requests.size(), 1);
    }

    void whatGhPrintsBecomesALine()
    {
        const QList<WorkItem> lines{
            {u"https://github.com/acme/api/pull/12"_s, u"api: Page by key"_s, QUrl(u"https://github.com/acme/api/pull/12"_s)},
            {u"https://github.com/acme/web/pull/3"_s, u"Without a repository"_s, QUrl(u"https://github.com/acme/web/pull/3"_s)},
            {u"https://github.com/acme/docs/pull/1"_s, u"docs"_s, QUrl(u"https://github.com/acme/docs/pull/1"_s)},
        };
        const auto row = [&lines](const RunResult &printed, const QString &text = QString()) {
            Desk desk;
            desk.refresh();
            QCOMPARE(desk.source->prs(), lines);
            desk.tools.answers.insert(kGh, printed);
            desk.refresh();
            QCOMPARE(desk.source->prState(), text.isEmpty() ? SourceState::ready() : SourceState::failed(text));
            QCOMPARE(desk.source->prs().isEmpty(), !text.isEmpty() || printed.out == "[]\n");
        };
        const QString asking = u"Couldn't ask GitHub: "_s;
        row({true, fixture("worktools/gh.json"), u"a warning"_s});
        row({true, "[]\n", {}});
        row({false, {}, u"To get started with GitHub CLI, please run:  gh auth login\n"_s}, kNotSignedIn);
        row({false, fixture("worktools/gh.json"), u"an author is missing"_s}, kNotSignedIn);
        row({false, {}, u"error connecting to api.github.com\n"_s}, asking + u"error connecting to api.github.com\n"_s);
        row({false, {}, QString(200, u'x')}, asking + QString(120, u'x'));
        for (const char *out : {"", "{}", "[1]", "[{\"url\": \"x\"}, []]", "[{\"url\""})
            row({true, out, {}}, asking);
    }

    void theRealGhSaysItIsNotSignedIn()
    {
        const QString gh = QStandardPaths::findExecutable(u"gh"_s);
        if (gh.isEmpty())
            QSKIP("gh isn't installed");
        const QTemporaryDir home;
        qputenv("GH_CONFIG_DIR", home.path().toUtf8());
        // On a build machine the tool words it differently.
        for (const char *name : {"GH_TOKEN", "GITHUB_TOKEN", "GH_ENTERPRISE_TOKEN", "GITHUB_ENTERPRISE_TOKEN", "GH_HOST", "CI",
                                 "BUILD_NUMBER", "RUN_ID"})
            qunsetenv(name);
        PosixToolRunner tools({QFileInfo(gh).path()});
        if (tools.run({u"gh"_s, u"auth"_s, u"status"_s}, {}, std::chrono::seconds(10)).ok)
            QSKIP("this gh gets its token from elsewhere than its configuration");
        const PullRequests read = loadPRs(tools);
        qunsetenv("GH_CONFIG_DIR");
        QCOMPARE(read.error, kNotSignedIn);
        QVERIFY(read.items.isEmpty());
    }

    void aToolThatFailsLosesItsItemsOnly()
    {
        Desk desk;
        desk.keychain.entries = kTokens;
        desk.refresh();
        QCOMPARE(desk.source->workState(), SourceState::ready());
        QCOMPARE(ids(desk.source->issues()),
                 QStringList({u"linear-ENG-412"_s, u"linear-OPS-7"_s, u"linear-ENG-9"_s, u"jira-ED-1"_s, u"jira-ED-2"_s,
                              u"jira-ED-3"_s}));
        QVERIFY(!desk.source->mentions().isEmpty());

        desk.answer(429, 200, 401);
        desk.refresh();
        QCOMPARE(desk.source->workState(), SourceState::failed(u"Linear: HTTP 429. Slack: the token was refused."_s));
        QCOMPARE(ids(desk.source->issues()), QStringList({u"jira-ED-1"_s, u"jira-ED-2"_s, u"jira-ED-3"_s}));
        QVERIFY(desk.source->mentions().isEmpty());

        desk.prefs.setJiraSite({});
        desk.answer();
        desk.refresh();
        QCOMPARE(desk.source->workState(), SourceState::failed(u"Jira: add your Jira site and email in Settings."_s));
        desk.keychain.entries = {{u"Velto.slack"_s, u"secret"_s}};
        desk.http.answer = [](const HttpRequest &) { return HttpReply{{}, {}, u"Host not found."_s}; };
        desk.refresh();
        QCOMPARE(desk.source->workState(), SourceState::failed(u"Slack: Host not found."_s)); // one full stop
        desk.answer();
        desk.refresh();
        QCOMPARE(desk.source->workState(), SourceState::ready());
        QVERIFY(desk.source->issues().isEmpty());
        QVERIFY(!desk.source->mentions().isEmpty());
    }

    void aModuleThatIsOffIsNotAsked()
    {
        Desk desk;
        desk.keychain.entries.insert(u"Velto.linear"_s, u"t"_s);
        const QSignalSpy changed(desk.source.get(), &WorkSource::changed);
        desk.refresh();
        desk.refresh();
        QCOMPARE(changed.count(), 2); // one for each group: only changes are announced
        desk.prefs.set(Prefs::Module::Prs, false);
        desk.prefs.set(Prefs::Module::Work, false);
        desk.refresh();
        QCOMPARE(desk.tools.ran.size(), 2);
        QCOMPARE(desk.http.requests.size(), 2);
        QCOMPARE(desk.source->prState(), SourceState::ready());
        QCOMPARE(desk.source->prs().size(), 3);
    }

    void aSourceThatGoesWhileAskedLeavesNothingBehind()
    {
        for (int steps = 0; steps < 8; ++steps) {
            Desk desk;
            desk.keychain.entries = kTokens;
            desk.source->refresh(true);
            for (int i = 0; i < steps && desk.background.pending() > 0; ++i)
                desk.background.finish();
            desk.source.reset();
            desk.background.finishAll();
        }
    }

private:
    /// What a source needs, and the source itself.
    struct Desk : StoreDesk {
        FakeHttp http;
        std::unique_ptr<WorkSource> source =
            std::make_unique<WorkSource>(WorkSource::Needs{clock, background, tools, http, keychain, prefs});

        Desk()
        {
            for (const Prefs::Module module : {Prefs::Module::Prs, Prefs::Module::Work})
                prefs.set(module, true);
            prefs.setJiraSite(u"acme.atlassian.net"_s);
            prefs.setJiraEmail(u"sam@acme.example"_s);
            tools.installed.insert(u"gh"_s);
            tools.answers.insert(kGh, {true, fixture("worktools/gh.json"), {}});
            answer();
        }

        void refresh(bool force = true)
        {
            source->refresh(force);
            background.finishAll();
        }

        /// Lets the services answer, each with one item; a status can be given for each.
        void answer(int linear = 200, int jira = 200, int slack = 200)
        {
            http.answer = [=, this](const HttpRequest &request) {
                const QString host = request.url.host();
                if (host.contains("linear"_L1))
                    return HttpReply{linear, fixture("worktools/linear.json"), {}};
                if (host.contains("atlassian"_L1))
                    return HttpReply{jira, fixture("worktools/jira.json"), {}};
                const QByteArray ts = QByteArray::number(clock.wallTime().toSecsSinceEpoch());
                return request.url.path().endsWith("auth.test"_L1)
                    ? HttpReply{slack, fixture("worktools/slack-auth.json"), {}}
                    : HttpReply{slack, fixture("worktools/slack-search.json").replace("1795161599.999", ts), {}};
            };
        }
    };
};

const Registered<WorkSourceTest> registered;

} // namespace velto

#include "WorkSourceTest.moc"
