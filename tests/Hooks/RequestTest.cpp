#include "RunTests.h"

#include "Fixture.h"
#include "Hooks/HookEvent.h"
#include "Hooks/HookRequest.h"

using velto::HookRequest;
using State = HookRequest::State;
using namespace Qt::StringLiterals;
using velto::HookEvent;

namespace {

const QByteArray kToken = "0123456789abcdef0123456789abcdef";
const QByteArray kSecret = "X-Velto-Token: " + kToken + "\r\n";

struct Outcome {
    State state;
    QByteArray body;

    bool operator==(const Outcome &) const = default;
};

/// Feeds `pieces`, then the end of the stream if nothing has been decided by then.
Outcome read(const QList<QByteArray> &pieces)
{
    HookRequest request(kToken);
    for (const auto &piece : pieces)
        request.feed(piece, false);
    if (request.state() == State::More)
        request.feed({}, true);
    return {request.state(), request.state() == State::Complete ? request.body().toByteArray() : QByteArray()};
}

const QDateTime kNow(QDate(2026, 11, 21), QTime(9, 0));
const auto kSession = u"aefe0d0b-131d-43a7-b83d-daf04de24178"_s;

std::optional<HookEvent> parse(QByteArrayView body)
{
    return HookEvent::parse(body, kNow);
}

/// The detail of a call with this `tool_input`; "-" if there is none.
QString detail(const QByteArray &input)
{
    const auto event = parse("{\"hook_event_name\":\"x\",\"tool_input\":" + input + "}");
    return event ? event->toolDetail.value_or(u"-"_s) + (event->toolIsCut ? u"…"_s : QString()) : u"no event"_s;
}

} // namespace

/// What the reader of hook requests makes of bytes from anywhere, and what is taken from the body of a call.
class RequestTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void judgesTheSameHoweverTheBytesAreCut()
    {
        const auto row = [](const char *name, const QByteArray &bytes, State state, const QByteArray &body = {}) {
            const Outcome expected{state, body};
            QVERIFY2(read({bytes}) == expected, name);
            QList<QByteArray> single;
            for (qsizetype at = 0; at < bytes.size(); ++at) {
                QVERIFY2(read({bytes.first(at), bytes.sliced(at)}) == expected, name);
                single.append(bytes.sliced(at, 1));
            }
            QVERIFY2(read(single) == expected, name);
        };
        const QByteArray event = "POST /event HTTP/1.1\r\n";

        row("event", event + kSecret + "Content-Length: 2\r\n\r\n{}", State::Complete, "{}");
        row("permission", "POST /permission HTTP/1.1\r\n" + kSecret + "Content-Length: 2\r\n\r\n{}", State::Complete, "{}");
        row("names in any case", event + "x-VELTO-token:\t" + kToken + " \t\r\nCONTENT-LENGTH:2\r\n\r\n{}", State::Complete,
            "{}");
        row("empty lines first", "\r\n" + event + kSecret + "Content-Length: 2\r\n\r\n{}", State::Complete, "{}");
        row("a line without a colon", event + "nonsense\r\n" + kSecret + "Content-Length: 2\r\n\r\n{}", State::Complete, "{}");
        row("no version", "POST /event\r\n" + kSecret + "\r\n", State::Complete);
        row("latin bytes", event + "X-Name: J\xf6rg\r\n" + kSecret + "Content-Length: 3\r\n\r\n\xe9\xff\x80", State::Complete,
            "\xe9\xff\x80");
        row("the later header counts",
            event + "X-Velto-Token: wrong\r\nContent-Length: x\r\n" + kSecret + "Content-Length: 2\r\n\r\n{}", State::Complete,
            "{}");
        for (const char *length :
             {"", "Content-Length: 2 bytes\r\n", "Content-Length: 99999999999999999999\r\n", "Content-Length: -5\r\n"})
            row(length, event + kSecret + length + "\r\n", State::Complete);
        row("a short body at the end", event + kSecret + "Content-Length: 2000\r\n\r\n{\"a\":1}", State::Complete, "{\"a\":1}");

        row("the end within the header", event + kSecret, State::Broken);
        row("nothing at all", "", State::Broken);
        row("line feeds alone", "POST /event HTTP/1.1\n\n", State::Broken);

        row("an empty header", "\r\n\r\n", State::Refused);
        for (const char *start : {"GET /event HTTP/1.1", "post /event HTTP/1.1", "POST /event/ HTTP/1.1",
                                  "POST /event?a=1 HTTP/1.1", "POST  /event HTTP/1.1", "POST"})
            row(start, start + ("\r\n" + kSecret) + "\r\n", State::Refused);
        row("an origin of null", event + kSecret + "Origin: null\r\n\r\n", State::Refused);
        row("an empty origin", event + "oRIGIN:\r\n" + kSecret + "\r\n", State::Refused);
        row("no secret", event + "Content-Length: 2\r\n\r\n", State::Refused);
        for (const QByteArray &secret : {QByteArray(), kToken.toUpper(), kToken + kToken, kToken.chopped(1)})
            row(secret.constData(), event + "X-Velto-Token: " + secret + "\r\n\r\n", State::Refused);
        row("a wrong secret later", event + kSecret + "X-Velto-Token: wrong\r\n\r\n", State::Refused);
    }

    void refusesBeforeTheBodyHasCome()
    {
        HookRequest request(kToken);
        QCOMPARE(request.feed("POST /event HTTP/1.1\r\nContent-Length: 100000\r\n\r\n", false), State::Refused);
        QVERIFY(request.mayHaveMore());
        QCOMPARE(request.feed(kSecret, true), State::Refused);

        // Bytes that come with the body are all used, whatever length was announced.
        HookRequest generous(kToken);
        QCOMPARE(generous.feed("POST /event HTTP/1.1\r\n" + kSecret + "Content-Length: 2\r\n\r\n{\"a\":1}", false),
                 State::Complete);
        QCOMPARE(generous.body(), QByteArrayView("{\"a\":1}"));
        QVERIFY(generous.mayHaveMore());
    }

    void takesAtMost256000BytesInAll()
    {
        const QByteArray head = "POST /event HTTP/1.1\r\n" + kSecret + "Content-Length: ";
        const auto request = [&](qsizetype total) {
            const auto bodySize = total - head.size() - 6 - 4;
            return head + QByteArray::number(bodySize) + "\r\n\r\n" + QByteArray(bodySize, 'x');
        };
        const auto fits = request(256'000);
        QCOMPARE(fits.size(), 256'000);
        QVERIFY(read({fits}).state == State::Complete);
        QVERIFY(read({fits.first(65'536), fits.sliced(65'536)}).state == State::Complete);
        QVERIFY(read({request(256'001)}).state == State::TooLarge);

        HookRequest header(kToken);
        QCOMPARE(header.feed(QByteArray(256'000, 'x'), false), State::More);
        QCOMPARE(header.feed("x", false), State::TooLarge);
    }

    void repliesByteForByte()
    {
        QCOMPARE(
            velto::hookReply("204 No Content"),
            QByteArray(
                "HTTP/1.1 204 No Content\r\nConnection: close\r\nContent-Type: application/json\r\nContent-Length: 0\r\n\r\n"));
        QCOMPARE(velto::permissionReply(std::nullopt), velto::hookReply("204 No Content"));
        const QByteArray head = "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Type: application/json\r\nContent-Length: ";
        QCOMPARE(velto::permissionReply(true),
                 head
                     + "92\r\n\r\n"
                       R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{"behavior":"allow"}}})");
        QCOMPARE(velto::permissionReply(false),
                 head
                     + "121\r\n\r\n"
                       R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest",)"
                       R"("decision":{"behavior":"deny","message":"Denied from Velto"}}})");
    }

    void readsWhatClaudeCodeSends()
    {
        const auto row = [](const char *file, const QString &said) { // the event, the message, the tool and its detail
            const auto read = parse(velto::fixture(QByteArray("hooks/") + file + ".json"));
            QVERIFY2(read, file);
            QCOMPARE(read->sessionId, std::optional(kSession));
            QCOMPARE(read->cwd, std::optional(u"/home/me/proj"_s));
            QCOMPARE(read->at, kNow);
            const auto text = [](const std::optional<QString> &part) { return part.value_or(u"-"_s); };
            QCOMPARE(QStringList({read->event, text(read->message), text(read->tool), text(read->toolDetail)}).join(u'|'), said);
        };
        row("permission-bash", u"PermissionRequest|-|Bash|touch made-by-bash.txt"_s);
        row("permission-write", u"PermissionRequest|-|Write|w.txt"_s);
        row("permission-question", u"PermissionRequest|-|AskUserQuestion|-"_s);
        row("stop", u"Stop|-|-|-"_s);
        row("notification-permission", u"Notification|Claude needs your permission|-|-"_s);
    }

    void failsWithoutAnEventName()
    {
        for (const QByteArray body : {"", "[]", "{", "null", "\"Stop\"", "{}", R"({"hook_event_name":1})",
                                      R"({"hook_event_name":"Stop"} x)", "{\"hook_event_name\":\"\xff\"}"})
            QVERIFY2(!parse(body), body.constData());
        QVERIFY(!parse("{\"hook_event_name\":\"" + QByteArray(64, 'a') + "\"}"));
        QVERIFY(!parse("{\"hook_event_name\":\"Stop\",\"a\":" + QByteArray(100'000, '[') + QByteArray(100'000, ']') + "}"));
    }

    void leavesOutWhatHasAnotherForm()
    {
        QVERIFY(parse("{\"hook_event_name\":\"" + QByteArray(63, 'a') + "\"}"));
        const auto event =
            parse(R"({"hook_event_name":"Stop","session_id":1,"cwd":null,"message":[],"tool_name":{},"tool_input":"rm"})");
        QVERIFY(event);
        QVERIFY(!event->sessionId && !event->cwd && !event->message && !event->tool && !event->toolDetail);

        const auto sessionOf = [](const QString &session) {
            return parse(u"{\"hook_event_name\":\"Stop\",\"session_id\":\"%1\"}"_s.arg(session).toUtf8())->sessionId;
        };
        QCOMPARE(sessionOf(kSession.toUpper()), std::optional(kSession.toUpper()));
        for (const auto &session : {u"--resume"_s, kSession + u"\\n"_s, kSession.chopped(1), kSession.chopped(1) + u'g',
                                    QString(kSession).replace(8, 1, u"0"_s), QString(kSession).replace(0, 1, u"\u0661"_s)})
            QVERIFY2(!sessionOf(session), qPrintable(session));
    }

    void namesWhatTheToolTouches()
    {
        QCOMPARE(detail(R"({"file_path":"/home/me/a b.txt","command":"rm -rf /"})"), u"a b.txt"_s);
        QCOMPARE(detail("{\"file_path\":\"/home/me/dir//\"}"), u"dir"_s);
        QCOMPARE(detail(R"({"file_path":"name"})"), u"name"_s);
        QCOMPARE(detail(R"({"file_path":"/"})"), u"/"_s);
        QCOMPARE(detail(R"({"file_path":7,"command":"make\n\ntest"})"), u"make  test"_s);
        QCOMPARE(detail("{\"pattern\":\"*.h\",\"url\":\"https://example.com/a\"}"), u"https://example.com/a"_s);
        QCOMPARE(detail(R"({"pattern":"*.h"})"), u"*.h"_s);
        QCOMPARE(detail(R"({"questions":[]})"), u"-"_s);
        QCOMPARE(detail(R"(["command"])"), u"-"_s);
    }

    void cutsTextsButNoCharacter()
    {
        const QByteArray face = "\xf0\x9f\x98\x80"; // two UTF-16 units
        const auto event = parse("{\"hook_event_name\":\"x\",\"message\":\"" + QByteArray(199, 'm') + face + "\",\"tool_name\":\""
                                 + QByteArray(41, 't') + "\"}");
        QVERIFY(event);
        QCOMPARE(event->message, std::optional(QString(199, u'm')));
        QCOMPARE(event->tool, std::optional(QString(40, u't')));
        QCOMPARE(event->wholeTool, QString(41, u't')); // for the screen nothing is cut
        QVERIFY(event->toolIsCut);
        QCOMPARE(detail("{\"command\":\"" + QByteArray(78, 'c') + face + "more\"}"),
                 QString(78, u'c') + QString::fromUtf8(face) + u'…');
        QCOMPARE(detail("{\"command\":\"" + QByteArray(79, 'c') + face + "\"}"), QString(79, u'c') + u'…');
    }
};

static const Registered<RequestTest> registered;

#include "RequestTest.moc"
