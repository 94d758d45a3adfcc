#include "Tabs/Quillbox/QuillboxClient.h"
#include "Core/Http.h"
#include "HttpStandIn.h"
#include "Platform/Posix/ThreadPoolBackground.h"
#include "RunTests.h"
#include "Tabs/Quillbox/SnapshotDate.h"
#include "Tabs/Quillbox/VeltoSnapshot.h"

using namespace Qt::StringLiterals;

namespace velto {

/// Every way in which a call to a real server can end, as the message that the user reads.
class QuillboxClientTest : public QObject {
    Q_OBJECT

    using Answer = HttpStandIn::Answer;
    static constexpr auto kEmpty = R"({"todos": [], "handoffs": [], "heard": [], "written_today": {}})";

    HttpStandIn m_hub;
    std::optional<Http> m_http{std::in_place}; // a new object for each test, at the same address
    ThreadPoolBackground m_background;
    QuillboxMode m_mode;
    const QuillboxClient m_client{*m_http, m_background, [this] { return m_mode; }, std::chrono::milliseconds(300)};
    static QByteArray whole()
    {
        return R"json({"todos": [{"id": 9007199254740993, "title": "Ring", "body": "", "due": "2026-03-01", "who": "me", "project": "",
            "scope": "office", "prio": 2, "unknown": {}}], "handoffs": [{"id": 1, "name": "Handoff · api", "topic": null,
            "at": "2026-03-10 12:00:00"}, {"id": 2, "name": "web", "topic": "css", "device": "air", "at": ""}],
            "heard": [{"id": 3, "name": "Tolver: milk", "at": ""}], "gap": {"id": 4.0, "question": "Why?", "grip": ""},
            "written_today": {"note": 3, "fact": 5, "a": 3}})json";
    }

private Q_SLOTS:
    void init()
    {
        m_http.emplace();
        m_hub.requests.clear();
        m_hub.answer = [](const auto &) { return Answer{200, kEmpty}; };
        m_mode = QuillboxMode::hub(m_hub.url(), u"qb_secret"_s);
    }

    void asksAsTheHubExpects()
    {
        m_mode = QuillboxMode::hub(m_hub.url(u"/base%20one/"_s), u"qb_secret"_s);
        QVERIFY(QCoro::waitFor(m_client.snapshot()));
        const QJsonObject json{{u"title"_s, u"Ring „Ä“"_s}, {u"tags"_s, QJsonArray{u"todo"_s}}};
        QVERIFY(QCoro::waitFor(m_client.request(u"/api/write"_s, "POST", json, m_mode)));
        QVERIFY(QCoro::waitFor(m_client.request(u"/api/todo/7/done"_s, "POST", QJsonObject(), m_mode)));

        const HttpStandIn::Request get = m_hub.requests.value(0);
        QCOMPARE(get.method + ' ' + get.target, QByteArray("GET /base%20one/api/velto"));
        QCOMPARE(get.headers.value("authorization"), QByteArray("Bearer qb_secret"));
        QVERIFY(get.body.isEmpty() && !get.headers.contains("content-type"));
        const HttpStandIn::Request write = m_hub.requests.value(1);
        QCOMPARE(write.method + ' ' + write.target, QByteArray("POST /base%20one/api/write"));
        QCOMPARE(write.headers.value("content-type"), QByteArray("application/json"));
        QCOMPARE(QJsonDocument::fromJson(write.body).object(), json);
        QCOMPARE(m_hub.requests.value(2).body, QByteArray("{}"));
        // A line break in a token doesn't begin a header.
        m_mode = QuillboxMode::hub(m_hub.url(), u"t\r\nX-Other: 1"_s);
        QVERIFY(QCoro::waitFor(m_client.snapshot()));
        QVERIFY(!m_hub.requests.last().headers.contains("x-other"));
    }

    void eachStatusHasItsSentence()
    {
        const QString token = u"Quillbox at 127.0.0.1 didn't accept the token. Paste a new one in Settings → Quillbox."_s;
        const QString older =
            u"The Quillbox hub at 127.0.0.1 is older than this version of Velto. Update the hub, then press Refresh."_s;
        const QString problem = u"Quillbox at 127.0.0.1 had a problem (%1). Velto will try again in a minute."_s;
        const QString other = u"Quillbox at 127.0.0.1 answered %1. Velto will try again in a minute."_s;
        const QMap<int, QString> sentences{{204, other}, {302, other},   {401, token},   {403, token}, {404, older},
                                           {429, other}, {500, problem}, {599, problem}, {600, other}};
        for (auto each = sentences.begin(); each != sentences.end(); ++each) {
            const int status = each.key();
            const QString text = QString(each.value()).replace(u"%1"_s, QString::number(status));
            m_hub.answer = [&](const auto &) { return Answer{status, status == 204 ? "" : kEmpty}; };
            QCOMPARE(QCoro::waitFor(m_client.snapshot()).error(), (HubError{status, text}));
            QCOMPARE(QCoro::waitFor(m_client.test(m_mode.url(), u"t"_s)), text);
            QCOMPARE(m_hub.requests.last().headers.value("authorization"), QByteArray("Bearer t"));
        }
    }

    void noAnswerHasOneSentence()
    {
        const QString text = u"Can't reach Quillbox at %1. Check your internet connection, or the address in Settings."_s;
        const auto answer = [this](const char *url) { return QCoro::waitFor(m_client.test(QUrl(QLatin1StringView(url)), {})); };
        m_hub.answer = [](const auto &) { return Answer{200, kEmpty, {}, HttpStandIn::Manner::CutOff}; };
        QCOMPARE(QCoro::waitFor(m_client.snapshot()).error(), (HubError{-1, text.arg(u"127.0.0.1"_s)}));
        QCOMPARE(answer("http://hub.invalid"), text.arg(u"hub.invalid"_s));
        QCOMPARE(answer("hub:"), text.arg(u"the hub"_s));
        QCOMPARE(answer("file:///etc"), text.arg(u"the hub"_s));
    }

    void aDocumentOfAnotherKindIsNotUnderstood()
    {
        for (const auto &[body, why] : std::initializer_list<std::tuple<QByteArray, QString>>{
                 {QByteArray("<html>Sign in</html>"), u"It is no JSON from byte 0 on"_s},
                 {QByteArray(kEmpty).replace(", \"written_today\": {}", ""), u"\"written_today\" is missing"_s},
                 {QByteArray(kEmpty).chopped(1), u"It is no JSON from byte 62 on"_s}}) {
            m_hub.answer = [&body = body](const auto &) { return Answer{200, body}; };
            const auto answer = QCoro::waitFor(m_client.snapshot());
            QCOMPARE(
                answer.error(),
                (HubError{
                    0,
                    u"Quillbox sent data this version of Velto doesn't understand. Update Velto or the hub. (%1)"_s.arg(why)}));
            QCOMPARE(QCoro::waitFor(m_client.test(m_mode.url(), {})), std::nullopt); // for a test, a 200 is enough
        }
    }

    void withoutAHubNothingGoesOut()
    {
        for (const QuillboxMode &mode : {QuillboxMode::missing(), QuillboxMode::local(u"/q"_s)}) {
            m_mode = mode;
            QCOMPARE(QCoro::waitFor(m_client.snapshot()).error(),
                     (HubError{0, u"Quillbox isn't connected. Connect it in Settings."_s}));
        }
        QVERIFY(m_hub.requests.isEmpty());
        QCOMPARE(QuillboxClient(*m_http, m_background).current(), QuillboxMode::missing());
    }

    void manyCallsAtOnceAndAClientThatGoes()
    {
        std::vector<QuillboxClient::Answer<VeltoSnapshot>> answers;
        {
            const QuillboxClient client(*m_http, m_background, [this] { return m_mode; });
            for (int i = 0; i < 20; ++i)
                answers.push_back(client.snapshot());
        }
        for (const auto &answer : answers)
            QVERIFY(QCoro::waitFor(answer));
    }

    void everyFieldComesAcross()
    {
        const auto read = VeltoSnapshot::decode(whole());
        QVERIFY2(read, qPrintable(read ? QString() : read.error()));
        const VeltoSnapshot::HubTodo todo{9007199254740993, u"Ring"_s, {}, u"2026-03-01"_s, u"me"_s, {}, u"office"_s, 2};
        QCOMPARE(read->todos, QList{todo});
        QCOMPARE(read->handoffs.at(0), (VeltoSnapshot::Handoff{1, u"Handoff · api"_s, {}, {}, u"2026-03-10 12:00:00"_s}));
        QCOMPARE(read->handoffs.at(1), (VeltoSnapshot::Handoff{2, u"web"_s, u"css"_s, u"air"_s, {}}));
        QCOMPARE(read->heard, QList{(VeltoSnapshot::Heard{3, u"Tolver: milk"_s, {}})});
        QCOMPARE(read->gap, (VeltoSnapshot::Gap{4, {}, u"Why?"_s, u""_s}));
        const QList<std::pair<QString, qint64>> written{{u"note"_s, 3}, {u"fact"_s, 5}, {u"a"_s, 3}}; // in the document's order
        QCOMPARE(read->writtenToday, written);
        for (const QByteArray gap : {"", R"("gap": null, )"}) // a card may be absent or null
            QCOMPARE(*VeltoSnapshot::decode(QByteArray(kEmpty).insert(1, gap)), VeltoSnapshot());
    }

    void whatIsWrongIsToldByKeyAndType()
    {
        const auto row = [](const char *from, const char *to, const QString &description) {
            QByteArray json = whole();
            QVERIFY2(json.contains(from), from);
            const auto read = VeltoSnapshot::decode(json.replace(json.indexOf(from), qstrlen(from), to));
            QVERIFY2(!read, to);
            QCOMPARE(read.error(), description);
        };
        row("\"todos\"", "\"tasks\"", u"\"todos\" is missing"_s);
        row("\"prio\": 2", "\"prio\": \"2\"", u"\"todos[0].prio\" should be an integer and is text"_s);
        row("\"prio\": 2", "\"prio\": 2.5", u"\"todos[0].prio\" should be an integer and is a number"_s);
        row("9007199254740993", "99999999999999999999", u"\"todos[0].id\" should be an integer and is a number"_s);
        row("\"Ring\"", "null", u"\"todos[0].title\" should be text and is null"_s);
        row("\"css\"", "7", u"\"handoffs[1].topic\" should be text and is a number"_s);
        row("[{\"id\": 3", "[3, {\"id\": 3", u"\"heard[0]\" should be an object and is a number"_s);
        row("{\"id\": 4.0", "[], \"x\": {\"id\": 4.0", u"\"gap\" should be an object and is a list"_s);
        row("\"fact\": 5", "\"fact\": \"five\"", u"\"written_today.*\" should be an integer and is text"_s);
    }

    void timesAreReadInFourWays()
    {
        const auto row = [](const char *text, const char *utc) {
            const auto date = snapshotDate(QString::fromLatin1(text));
            QCOMPARE(date ? date->toUTC().toString(Qt::ISODateWithMs) : QString(), QString::fromLatin1(utc));
        };
        row("2026-03-10 12:00:00", "2026-03-10T12:00:00.000Z");
        row("2026-03-10T12:00:00Z", "2026-03-10T12:00:00.000Z");
        row("2026-03-10T13:00:00+01:00", "2026-03-10T12:00:00.000Z");
        row("2026-03-10T13:00:00.250999+01:00", "2026-03-10T12:00:00.250Z");
        row("2024-02-29 23:59:59", "2024-02-29T23:59:59.000Z");
        for (const char *none :
             {"", "2026-03-10", "2026-03-10 12:00", "2026-03-10T12:00:00", "2026-03-10 12:00:00Z", "2026-02-29 12:00:00",
              "2026-03-10 24:00:00", "2026-03-10 12:00:00\n", " 2026-03-10 12:00:00", "2026-03-10T12:00:00+25:00"})
            row(none, "");
    }
};

const Registered<QuillboxClientTest> registered;

} // namespace velto

#include "QuillboxClientTest.moc"
