#include "Core/Prefs.h"
#include "HttpStandIn.h"
#include "Platform/Fake/FakeBackground.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Fake/FakeToolRunner.h"
#include "Platform/Places.h"
#include "Tabs/Home/WorkError.h"
#include "Tabs/Home/WorkSource.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;
using Answer = velto::HttpStandIn::Answer;
using Manner = velto::HttpStandIn::Manner;

namespace velto {

namespace {

/// JSON with its quotes written as single ones.
QByteArray json(QByteArray text)
{
    return text.replace('\'', '"');
}

const QByteArray kIssues = json("{'data':{'viewer':{'assignedIssues':{'nodes':[{'identifier':'ENG-7','title':'Keep <b>rows</b>',"
                                "'url':'https://linear.app/x/issue/ENG-7'},{'title':'no identifier'}]}}}}");
const QByteArray kJira = json("{'isLast':true,'issues':[{'expand':'','id':'10001','self':'https://x/rest','key':'OPS-3',"
                              "'fields':{'summary':'Rotate keys'}},{'fields':{'summary':'no key'}}]}");
const QByteArray kPrs = json("[{'title':'Keep the list','url':'https://github.com/a/web/pull/1','repository':{'name':'web',"
                             "'nameWithOwner':'a/web'}},{'title':'No repository','url':'https://github.com/a/b/pull/2'},"
                             "{'title':'no url'}]");

const QString kGh = u"gh search prs --review-requested=@me --state=open --json title,url,repository --limit 20"_s;

struct Office {
    HttpStandIn service{HttpStandIn::Security::Tls};
    FakeClock clock;
    FakeBackground background;
    FakeToolRunner tools;
    FakeKeychain keychain;
    FakeDefaults defaults;
    Places places{u"/home/me"_s, {}, {}, {}};
    Prefs prefs{defaults, places, clock};
    Http http{service.trust()};
    WorkSource work{{clock, background, tools, http, keychain, prefs,
                     {service.url(u"/linear"_s), service.url(u"/slack/"_s), service.url()}}};

    Office()
    {
        prefs.selectMode(Prefs::Mode::All);
        prefs.setJiraSite(u"https://team.example.net/"_s);
        prefs.setJiraEmail(u"me@example.com"_s);
    }
    void refresh(bool force = true)
    {
        work.refresh(force);
        for (int i = 0; i < 4; ++i) // the keyring is asked for one secret after the other
            background.finishAll();
    }
    static QStringList titles(const QList<WorkItem> &items)
    {
        QStringList result;
        for (const WorkItem &item : items)
            result.append(item.title);
        return result;
    }
};

} // namespace

class WorkTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void pullRequestsOfTheCommandLineTool_data()
    {
        QTest::addColumn<RunResult>("printed");
        QTest::addColumn<QStringList>("titles");
        QTest::addColumn<SourceState>("state");
        const auto ready = SourceState::ready();
        QTest::newRow("two") << RunResult{true, kPrs, {}} << QStringList{u"web: Keep the list"_s, u"No repository"_s} << ready;
        QTest::newRow("none") << RunResult{true, "[]", {}} << QStringList() << ready;
        QTest::newRow("not signed in")
            << RunResult{false, {}, u"To get started with GitHub CLI, please run:  gh auth login"_s} << QStringList()
            << SourceState::failed(u"The GitHub CLI isn't signed in. Run `gh auth login`."_s);
        QTest::newRow("rubbish") << RunResult{true, "<html>", {}} << QStringList()
                                 << SourceState::failed(u"Couldn't ask GitHub: "_s);
        QTest::newRow("long failure") << RunResult{false, {}, QString(500, u'x')} << QStringList()
                                      << SourceState::failed(u"Couldn't ask GitHub: "_s + QString(120, u'x'));
    }

    void pullRequestsOfTheCommandLineTool()
    {
        QFETCH(RunResult, printed);
        Office office;
        office.tools.installed.insert(u"gh"_s);
        office.tools.answers.insert(kGh, printed);
        office.refresh();
        QTEST(Office::titles(office.work.prs()), "titles");
        QTEST(office.work.prState(), "state");
    }

    void everyToolTellsItsOwn()
    {
        Office office;
        const double now = double(office.clock.wallTime().toMSecsSinceEpoch()) / 1000;
        const QByteArray recent = QByteArray::number(now - 3600, 'f', 6);
        const QByteArray old = QByteArray::number(now - 86'401, 'f', 6);
        const QByteArray mentions = "{\"ok\":true,\"messages\":{\"matches\":[{\"ts\":\"" + recent
            + "\",\"channel\":{\"name\":\"dev\"},\"text\":\"a\\nb" + QByteArray(100, 'x')
            + "\",\"permalink\":\"https://x.slack.com/p1\"},{\"ts\":\"" + recent + "\",\"text\":\"hi\"},{\"ts\":\"" + old
            + "\",\"text\":\"old\"},{\"ts\":5,\"text\":\"no text\"}]}}";
        office.service.answer = [&](const HttpStandIn::Request &request) {
            if (request.target == "/linear")
                return Answer{200, kIssues};
            if (request.target.startsWith("/rest/api/3/search/jql?"))
                return Answer{200, kJira};
            return request.target == "/slack/auth.test" ? Answer{200, json("{'ok':true,'user_id':'U1'}")} : Answer{200, mentions};
        };
        for (const QString &name : {u"linear"_s, u"jira"_s, u"slack"_s})
            office.keychain.put(u"Velto."_s + name, u"secret-"_s + name);
        office.refresh();
        QTRY_COMPARE(office.work.workState(), SourceState::ready());
        QCOMPARE(Office::titles(office.work.issues()), QStringList({u"ENG-7 Keep <b>rows</b>"_s, u"OPS-3 Rotate keys"_s}));
        QCOMPARE(office.work.issues().at(1).url, QUrl(u"https://team.example.net/browse/OPS-3"_s));
        QCOMPARE(Office::titles(office.work.mentions()), QStringList({u"#dev: a b"_s + QString(77, u'x'), u"#DM: hi"_s}));

        const auto sent = [&](int index, const char *header) { return office.service.requests.value(index).headers.value(header); };
        QCOMPARE(office.service.requests.size(), 4);
        QCOMPARE(sent(0, "authorization"), QByteArray("secret-linear"));
        QCOMPARE(sent(1, "authorization"), "Basic " + QByteArray("me@example.com:secret-jira").toBase64());
        QCOMPARE(sent(2, "authorization"), QByteArray("Bearer secret-slack"));
        QVERIFY(office.service.requests.at(3).target.contains("query=%3C%40U1%3E&sort=timestamp&count=20"));
    }

    void aFailureNamesTheToolAndLeavesTheOthersAlone_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("message");
        QTest::newRow("refused") << 401 << QByteArray("{}") << u"Linear: the token was refused."_s;
        QTest::newRow("limited") << 429 << QByteArray("{}") << u"Linear: HTTP 429."_s;
        QTest::newRow("down") << 503 << QByteArray("<html>") << u"Linear: HTTP 503."_s;
        QTest::newRow("html") << 200 << QByteArray("<html>") << u"Linear: illegal value."_s;
        QTest::newRow("no data") << 200 << (json("{'data':null,'errors':[{}]}")) << QString();
        QTest::newRow("wrong types") << 200 << (json("{'data':{'viewer':{'assignedIssues':{'nodes':[7]}}}}")) << QString();
    }

    void aFailureNamesTheToolAndLeavesTheOthersAlone()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        QFETCH(QString, message);
        Office office;
        office.service.answer = [&](const HttpStandIn::Request &request) {
            return request.target == "/linear" ? Answer{status, body} : Answer{200, kJira};
        };
        office.keychain.put(u"Velto.linear"_s, u"t"_s);
        office.keychain.put(u"Velto.jira"_s, u"t"_s);
        office.refresh();
        QTRY_COMPARE(Office::titles(office.work.issues()), QStringList{u"OPS-3 Rotate keys"_s});
        QCOMPARE(office.work.workState(), message.isEmpty() ? SourceState::ready() : SourceState::failed(message));
    }

    void jiraNeedsASiteThatIsOne_data()
    {
        QTest::addColumn<QString>("site");
        QTest::addColumn<QString>("email");
        QTest::addColumn<QString>("message");
        const QString missing = u"Jira: add your Jira site and email in Settings."_s;
        const QString wrong = u"Jira: that Jira site address doesn't look right."_s;
        QTest::newRow("no site") << u" https:// / "_s << u"a@b.c"_s << missing;
        QTest::newRow("no email") << u"x.example.net"_s << QString() << missing;
        QTest::newRow("blank inside") << u"my team.example.net"_s << u"a@b.c"_s << wrong;
    }

    void jiraNeedsASiteThatIsOne()
    {
        QFETCH(QString, site);
        QFETCH(QString, email);
        QFETCH(QString, message);
        Office office;
        office.prefs.setJiraSite(site);
        office.prefs.setJiraEmail(email);
        office.keychain.put(u"Velto.jira"_s, u"t"_s);
        office.refresh();
        QCOMPARE(office.work.workState(), SourceState::failed(message));
        QVERIFY(office.service.requests.isEmpty());
    }

    void slackSpeaksForItself()
    {
        Office office;
        office.keychain.put(u"Velto.slack"_s, u"t"_s);
        office.service.answer = [](const auto &) { return Answer{200, json("{'ok':false,'error':'missing_scope'}")}; };
        office.refresh();
        QTRY_COMPARE(office.work.workState(), SourceState::failed(u"Slack: missing_scope."_s));
        office.service.answer = [](const auto &) { return Answer{200, json("{'ok':true}")}; };
        office.refresh();
        QTRY_COMPARE(office.work.workState(), SourceState::failed(u"Slack: couldn't find your user."_s));
        office.service.answer = [](const auto &) { return Answer{200, "[]"}; };
        office.refresh();
        QTRY_COMPARE(office.work.workState(), SourceState::failed(u"Slack: unexpected reply."_s));
    }

    void asksAtMostOnceInFiveMinutes()
    {
        Office office;
        office.tools.installed.insert(u"gh"_s);
        office.tools.answers.insert(kGh, {true, kPrs, {}});
        office.refresh(false);
        office.refresh(false);
        QCOMPARE(office.tools.ran.count(kGh), 1);
        office.clock.advance(std::chrono::seconds(299));
        office.refresh(false);
        QCOMPARE(office.tools.ran.count(kGh), 1);
        office.refresh(true);
        QCOMPARE(office.tools.ran.count(kGh), 2);
        office.clock.advance(std::chrono::seconds(300));
        office.refresh(false);
        QCOMPARE(office.tools.ran.count(kGh), 3);
    }

    void withoutAnyTokenItSaysWhatToDo()
    {
        Office office;
        office.refresh();
        QCOMPARE(office.work.workState(), SourceState::unavailable(u"No work tools connected."_s,
                                                                   u"Connect Linear, Jira or Slack in the Connect tab."_s));
        QCOMPARE(office.work.prState().reason(), u"The GitHub CLI isn't installed."_s);
    }

    void itsEndInTheMiddleOfAQuestionIsClean()
    {
        auto office = std::make_unique<Office>();
        office->service.answer = [](const auto &) { return Answer{200, "{}", {}, Manner::Silent}; };
        office->keychain.put(u"Velto.linear"_s, u"t"_s);
        office->refresh();
        QTRY_COMPARE(office->service.requests.size(), 1);
        office.reset();
    }
};

} // namespace velto

QTEST_GUILESS_MAIN(velto::WorkTest)
#include "WorkTest.moc"
