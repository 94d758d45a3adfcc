#include "Feeds/Work/WorkReaders.h"
#include "Fixture.h"
#include "HttpStandIn.h"
#include "Platform/Posix/ThreadPoolBackground.h"
#include "RunTests.h"

#include <optional>

#include "Core/WorkError.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QUrlQuery>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Answer = velto::HttpStandIn::Answer;
using Manner = velto::HttpStandIn::Manner;

namespace velto {

namespace {

const QString kToken = u"secret-Ünicode"_s;
const QDateTime kNow = QDateTime::fromSecsSinceEpoch(1'795'248'000, Qt::UTC);

using Items = QList<WorkItem>;

/// What a reader returns, or the message that it throws.
QCoro::Task<std::pair<Items, QString>> caught(QCoro::Task<Items> task)
{
    QString phrase;
    try {
        const Items items = co_await task;
        co_return std::pair(items, phrase);
    } catch (const WorkError &error) {
        phrase = error.errorDescription;
    }
    co_return std::pair(Items(), phrase);
}

std::pair<Items, QString> outcome(QCoro::Task<Items> task)
{
    return QCoro::waitFor(caught(std::move(task)));
}

} // namespace

/// Linear, Jira and Slack as TLS services on this machine: what they are asked, and what is made of their answers.
class WorkReadersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_http.emplace(m_service.trust());
        m_service.requests.clear();
        m_service.answer = working;
        m_limit = 20s;
    }

    void repliesBecomeItems()
    {
        QCOMPARE(read(Tool::Linear).items,
                 (QList<WorkItem>{
                     {u"linear-ENG-412"_s, u"ENG-412 Paging skips a row when the cursor is deleted"_s,
                      QUrl(u"https://linear.app/acme/issue/ENG-412/paging-skips-a-row-when-the-cursor-is-deleted"_s)},
                     {u"linear-OPS-7"_s, u"OPS-7 "_s, {}},
                     {u"linear-ENG-9"_s, u"ENG-9 <img src=http://x> & more"_s, {}},
                 }));
        QCOMPARE(read(Tool::Jira, u"http://acme.atlassian.net/ "_s).items,
                 (QList<WorkItem>{
                     {u"jira-ED-1"_s, u"ED-1 Bulk edit loses the last line"_s, QUrl(u"https://acme.atlassian.net/browse/ED-1"_s)},
                     {u"jira-ED-2"_s, u"ED-2 "_s, QUrl(u"https://acme.atlassian.net/browse/ED-2"_s)},
                     {u"jira-ED-3"_s, u"ED-3 "_s, QUrl(u"https://acme.atlassian.net/browse/ED-3"_s)},
                 }));
        QCOMPARE(read(Tool::Slack).items,
                 (QList<WorkItem>{
                     {u"slack-1795248000.0001"_s, u"#general: <@W12345678> can you look at the build?"_s,
                      QUrl(u"https://acme.slack.com/archives/C12345678/p1795248000000100"_s)},
                     {u"slack-1795161600.0"_s, u"#DM: a day ago to the second"_s, {}},
                 }));
    }

    void theQuestionsAreExact()
    {
        for (const Tool tool : kTools)
            read(tool);
        QCOMPARE(m_service.requests.size(), 4);
        const auto &linear = m_service.requests.at(0);
        QCOMPARE(linear.method, QByteArray("POST"));
        QCOMPARE(linear.headers.value("authorization"), kToken.toUtf8());
        QCOMPARE(linear.headers.value("content-type"), QByteArray("application/json"));
        const QString query =
            u"{ viewer { assignedIssues(first: 20, filter: { state: { type: { nin: [\"completed\", \"canceled\"] } } }) "
            "{ nodes { identifier title url } } } }"_s;
        QCOMPARE(QJsonDocument::fromJson(linear.body).object(), (QJsonObject{{u"query"_s, query}}));

        const auto &jira = m_service.requests.at(1);
        QCOMPARE(jira.method, QByteArray("GET"));
        QCOMPARE(jira.headers.value("authorization"), "Basic " + (u"sam@acme.example:"_s + kToken).toUtf8().toBase64());
        QCOMPARE(jira.headers.value("accept"), QByteArray("application/json"));
        const QUrl asked(QString::fromLatin1(jira.target));
        QCOMPARE(asked.path(), u"/rest/api/3/search/jql"_s);
        const QList<std::pair<QString, QString>> items{
            {u"jql"_s, u"assignee = currentUser() AND statusCategory != Done ORDER BY updated DESC"_s},
            {u"fields"_s, u"summary"_s},
            {u"maxResults"_s, u"20"_s}};
        QCOMPARE(QUrlQuery(asked).queryItems(QUrl::FullyDecoded), items);

        QCOMPARE(m_service.requests.at(2).target, QByteArray("/api/auth.test"));
        QCOMPARE(m_service.requests.at(3).target,
                 QByteArray("/api/search.messages?query=%3C%40W12345678%3E&sort=timestamp&count=20"));
        QCOMPARE(m_service.requests.at(3).headers.value("authorization"), "Bearer " + kToken.toUtf8());
    }

    void eachRefusalHasItsPhrase()
    {
        HttpStandIn elsewhere;
        for (const int status : {401, 403, 302, 404, 429, 500, 503}) {
            m_service.answer = [&](const auto &) {
                return Answer{status, "{\"error\": \"x\"}", {"Retry-After: 0", "Location: " + elsewhere.url().toEncoded()}};
            };
            const bool refused = status == 401 || status == 403;
            for (const Tool tool : kTools)
                QCOMPARE(read(tool).phrase, refused ? u"the token was refused"_s : u"HTTP %1"_s.arg(status));
        }
        QVERIFY(elsewhere.requests.isEmpty()); // no token goes to another host
    }

    void whatIsNoAnswerIsAPhrase()
    {
        const auto row = [this](const QByteArray &body, HttpStandIn::Manner manner = Manner::Whole) {
            m_service.answer = [&](const auto &) { return Answer{200, body, {}, manner}; };
            for (const Tool tool : kTools) {
                const Outcome came = read(tool);
                QVERIFY2(!came.phrase.isEmpty(), body.left(30).constData());
                QVERIFY2(!came.phrase.endsWith(u'.'), qPrintable(came.phrase));
                QVERIFY2(!came.phrase.contains("secret"_L1) && !came.phrase.contains("sam@"_L1), qPrintable(came.phrase));
            }
        };
        row("<html><h1>502</h1></html>");
        row({});
        row(fixture("worktools/jira.json").chopped(30)); // half a document
        row("{\"a\": \"\xff\xfe"); // not UTF-8
        row(QByteArray(1'000'000, '['));
        row("[\"" + QByteArray(50'000'000, 'x') + "\"]");
        row({}, Manner::Hangup);
        row(QByteArray(1000, ' '), Manner::CutOff);
        m_limit = 400ms;
        row({}, Manner::Silent);
        // A server without a trusted certificate isn't trusted.
        m_service.answer = working;
        m_http.emplace();
        QVERIFY(!read(Tool::Linear).phrase.isEmpty());
    }

    void otherShapesAreEmpty()
    {
        for (const QByteArray body :
             {"{}", "{\"data\": null, \"errors\": [{\"message\": \"x\"}]}", "{\"data\": []}", "{\"data\": {\"viewer\": 1}}",
              "{\"data\": {\"viewer\": {\"assignedIssues\": {\"nodes\": {}}}}}",
              "{\"data\": {\"viewer\": {\"assignedIssues\": {\"nodes\": [1, {\"identifier\": \"A-1\"}]}}}}", "{\"issues\": null}",
              "{\"issues\": {\"key\": \"A-1\"}}", "{\"issues\": [[], {\"key\": \"A-1\"}]}", "{\"messages\": []}",
              "{\"messages\": {\"matches\": true}}", "{\"messages\": {\"matches\": [null]}}"}) {
            QByteArray said = body;
            said.replace(0, 1, body == "{}" ? "{\"ok\": true" : "{\"ok\": true, ");
            m_service.answer = [&](const HttpStandIn::Request &request) {
                return request.target == "/api/auth.test" ? working(request) : Answer{200, said};
            };
            for (const Tool tool : kTools) {
                const Outcome came = read(tool);
                QVERIFY2(came.items.isEmpty() && came.phrase.isEmpty(), body.constData());
            }
        }
    }

    void slackSaysWhatIsWrong()
    {
        const auto row = [this](const QByteArray &auth, const QByteArray &search, const QString &phrase) {
            init();
            m_service.answer = [&](const HttpStandIn::Request &request) {
                return Answer{200, request.target == "/api/auth.test" ? auth : search};
            };
            QCOMPARE(read(Tool::Slack).phrase, phrase);
            QCOMPARE(m_service.requests.size(), search.isEmpty() ? 1 : 2);
        };
        row(R"({"ok": false, "error": "token_revoked"})", {}, u"token_revoked"_s);
        row(R"({"ok": false, "error": 7})", {}, u"the token was refused"_s);
        row(R"({"ok": 1})", {}, u"the token was refused"_s);
        row("[]", {}, u"unexpected reply"_s);
        row(R"({"ok": true, "user_id": null})", {}, u"couldn't find your user"_s);
        row(fixture("worktools/slack-auth.json"), R"({"ok": false, "error": "missing_scope", "needed": "search:read"})",
            u"missing_scope"_s);
    }

    void linesAreCutAsPeopleCount()
    {
        const QString face = u"👩‍👩‍👧"_s; // one character of eight code units
        QByteArray search = fixture("worktools/slack-search.json");
        search.replace("a day ago to the second", (face.repeated(81) + u'x').toUtf8());
        m_service.answer = [&](const HttpStandIn::Request &request) {
            return request.target.startsWith("/api/search") ? Answer{200, search} : working(request);
        };
        QCOMPARE(read(Tool::Slack).items.value(1).title, u"#DM: "_s + face.repeated(80));
        QCOMPARE(firstCharacters(u'e' + QString(1000, u'\u0301'), 3).size(), 120);
    }

    void aJiraSiteIsReadAsTyped()
    {
        const QString missing = u"add your Jira site and email in Settings"_s;
        const auto phrase = [this](const char *site) {
            m_service.requests.clear();
            const QString said = read(Tool::Jira, QLatin1String(site)).phrase;
            return said + u" asked"_s.repeated(m_service.requests.size());
        };
        for (const char *site :
             {"acme.atlassian.net", "https://acme.atlassian.net", " http://acme.atlassian.net// ", "https://http://acme.net"})
            QVERIFY2(phrase(site) == u" asked"_s, site);
        for (const char *site : {"", " / ", "https://"})
            QVERIFY2(phrase(site) == missing, site);
        for (const char *site : {"acme .net", "acme.net:port", "[acme", "?a=b", "acme.net@evil.example"})
            QVERIFY2(phrase(site) == u"that Jira site address doesn't look right"_s, site);
        QCOMPARE(outcome(jiraIssues(services(), u"acme.net"_s, {}, kToken)).second, missing);
    }

private:
    enum class Tool : quint8 { Linear, Jira, Slack };
    static constexpr Tool kTools[] = {Tool::Linear, Tool::Jira, Tool::Slack};
    struct Outcome {
        QList<WorkItem> items;
        QString phrase; ///< empty if nothing went wrong
    };

    /// The answer of a service that works.
    static HttpStandIn::Answer working(const HttpStandIn::Request &request)
    {
        if (request.target == "/graphql")
            return {200, fixture("worktools/linear.json")};
        if (request.target.startsWith("/rest/"))
            return {200, fixture("worktools/jira.json")};
        return {200, fixture(request.target == "/api/auth.test" ? "worktools/slack-auth.json" : "worktools/slack-search.json")};
    }

    WorkServices services()
    {
        return {*m_http, m_background, {m_service.url(u"/graphql"_s), m_service.url(u"/api/"_s), m_service.url()}, m_limit};
    }

    Outcome read(Tool tool, const QString &site = QStringLiteral("acme.atlassian.net"))
    {
        const auto [items, phrase] = tool == Tool::Linear ? outcome(linearIssues(services(), kToken))
            : tool == Tool::Jira                          ? outcome(jiraIssues(services(), site, u"sam@acme.example"_s, kToken))
                                                          : outcome(slackMentions(services(), kToken, [] { return kNow; }));
        return {items, phrase};
    }

    HttpStandIn m_service{HttpStandIn::Security::Tls};
    std::chrono::milliseconds m_limit; ///< for a service to answer
    ThreadPoolBackground m_background;
    std::optional<Http> m_http;
};

const Registered<WorkReadersTest> registered;

} // namespace velto

#include "WorkReadersTest.moc"
