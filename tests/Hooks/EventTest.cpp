#include "Fixture.h"
#include "Hooks/HookEvent.h"
#include "RunTests.h"

using namespace Qt::StringLiterals;
using velto::HookEvent;

namespace {

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

/// What is read from the body of a hook call.
class EventTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsWhatClaudeCodeSends()
    {
        using Text = std::optional<QString>;
        const auto row = [](const char *file, const QString &event, const Text &message, const Text &tool, const Text &detail) {
            const auto read = parse(velto::fixture(QByteArray("hooks/") + file + ".json"));
            QVERIFY2(read, file);
            QCOMPARE(read->event, event);
            QCOMPARE(read->sessionId, std::optional(kSession));
            QCOMPARE(read->cwd, std::optional(u"/home/me/proj"_s));
            QCOMPARE(read->message, message);
            QCOMPARE(read->tool, tool);
            QCOMPARE(read->toolDetail, detail);
            QCOMPARE(read->at, kNow);
        };
        row("permission-bash", u"PermissionRequest"_s, {}, u"Bash"_s, u"touch made-by-bash.txt"_s);
        row("permission-write", u"PermissionRequest"_s, {}, u"Write"_s, u"w.txt"_s);
        row("permission-question", u"PermissionRequest"_s, {}, u"AskUserQuestion"_s, {});
        row("stop", u"Stop"_s, {}, {}, {});
        row("notification-permission", u"Notification"_s, u"Claude needs your permission"_s, {}, {});
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
        QCOMPARE(event->wholeTool, QString(41, u't')); // the whole text, uncut, for the screen
        QVERIFY(event->toolIsCut);
        QCOMPARE(detail("{\"command\":\"" + QByteArray(78, 'c') + face + "more\"}"),
                 QString(78, u'c') + QString::fromUtf8(face) + u'…');
        QCOMPARE(detail("{\"command\":\"" + QByteArray(79, 'c') + face + "\"}"), QString(79, u'c') + u'…');
    }
};

const Registered<EventTest> registered;

#include "EventTest.moc"
