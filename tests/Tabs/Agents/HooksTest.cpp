#include "RunTests.h"
#include "Tabs/Agents/Desk.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace velto;

namespace {

const QString kSession = u"aefe0d0b-131d-43a7-b83d-daf04de24178"_s;

HookEvent bare(const QString &name)
{
    HookEvent result;
    result.event = name;
    return result;
}

HookEvent from(const QString &name)
{
    HookEvent result = bare(name);
    result.sessionId = kSession;
    result.cwd = u"/home/me/proj"_s;
    return result;
}

/// Claude Code's listing of the one session.
QByteArray listing(const QByteArray &status)
{
    return R"([{"name":"fix","sessionId":")" + kSession.toUtf8() + R"(","startedAt":1,"status":")" + status + "\"}]";
}

/// Claude Code's note about that session.
QByteArray noteOf(const QByteArray &status, qint64 since)
{
    return R"({"pid":4711,"sessionId":")" + kSession.toUtf8() + R"(","status":")" + status + R"(","statusUpdatedAt":)"
        + QByteArray::number(since) + "}";
}

} // namespace

/// Hook calls and permission questions.
class HooksTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void aFinishedSessionSpeaksOnceInThreeMinutes()
    {
        Desk desk;
        desk.applications.frontmostNow = u"com.microsoft.VSCode"_s;
        desk.source.hook(from(u"Stop"_s)); // held back, and so not counted
        desk.prefs.setPeekOnFinish(false);
        desk.applications.frontmostNow.clear();
        desk.source.hook(from(u"Stop"_s));
        QVERIFY(desk.peeks.isEmpty());
        desk.prefs.setPeekOnFinish(true);
        desk.source.hook(from(u"Stop"_s));
        QCOMPARE(desk.texts(), QStringList{u"proj is done"_s});
        QCOMPARE(desk.peeks[0].resume, kSession);
        desk.clock.advance(179s + 999ms);
        desk.source.hook(from(u"Stop"_s));
        QCOMPARE(desk.peeks.size(), 1);
        desk.clock.advance(1ms);
        desk.source.hook(from(u"Stop"_s));
        QCOMPARE(desk.peeks.size(), 2);
        HookEvent other = from(u"Stop"_s);
        other.sessionId.reset();
        desk.source.hook(other); // identified by its name, so it counts as another one
        QCOMPARE(desk.peeks.size(), 3);
        // A clock that was set back by a day doesn't silence a session for a day.
        desk.clock.setWallTime(desk.clock.wallTime().addDays(-1));
        desk.source.hook(from(u"Stop"_s));
        QCOMPARE(desk.peeks.size(), 4);
    }

    void notificationsSpeakAlsoOverATerminalAndWithTheModuleOff()
    {
        Desk desk;
        desk.applications.frontmostNow = u"com.apple.Terminal"_s;
        desk.prefs.set(Prefs::Module::Agents, false);
        HookEvent told = from(u"Notification"_s);
        told.message = u"Claude is waiting for your input"_s;
        desk.source.hook(told);
        desk.source.hook(bare(u"Notification"_s));
        QCOMPARE(desk.texts(), (QStringList{u"Claude is waiting for your input"_s, u"An agent needs you"_s}));
        QCOMPARE(desk.background.pending(), 0);
    }

    void namesTheSessionAsTheListingDoes()
    {
        Desk desk;
        desk.refresh("[{\"id\":\"x\",\"name\":\"Fix it\",\"state\":\"working\",\"startedAt\":1,\"sessionId\":\""
                     + kSession.toUtf8() + "\"},{\"id\":\"y\",\"name\":\"Nameless\",\"state\":\"working\",\"startedAt\":0}]");
        desk.source.hook(from(u"Stop"_s));
        desk.source.hook(bare(u"Notification"_s)); // without an id it is taken for the first session without one
        QCOMPARE(desk.texts(), (QStringList{u"Fix it is done"_s, u"Nameless needs you"_s}));
    }

    void aPermissionQuestionBecomesAPeekThatDecides()
    {
        Desk desk;
        QList<std::optional<bool>> answers;
        const auto reply = [&answers](std::optional<bool> answer) {
            answers.append(answer);
            return answers.size() < 2;
        };
        HookEvent asked = from(u"PermissionRequest"_s);
        desk.source.permission(asked, 1, reply);
        asked.tool = u"Bash"_s;
        asked.toolDetail = u"touch x"_s;
        asked.wholeTool = u"Bash"_s;
        asked.toolInput = QJsonObject{{u"command"_s, u"touch x"_s}};
        desk.source.permission(asked, 2, reply);
        QCOMPARE(desk.texts(), (QStringList{u"proj: needs permission"_s, u"proj: Bash touch x"_s}));
        QCOMPARE(desk.peeks[1].symbol, u"lock.shield"_s);
        const Question &whole = desk.peeks[1].question.value();
        QCOMPARE(whole.session + u'|' + whole.cwd.value_or(QString()) + u'|' + whole.tool, u"proj|/home/me/proj|Bash"_s);
        QCOMPARE(whole.input, asked.toolInput);
        QVERIFY(answers.isEmpty());
        desk.peeks[1].decide(false);
        QCOMPARE(answers, QList<std::optional<bool>>{false});
        desk.peeks[0].decide(true); // its asker is gone meanwhile
        QCOMPARE(desk.peeks.last().text, u"Too late: proj no longer waits for that answer"_s);
    }

    void aQuestionIsOverByManySigns()
    {
        for (const QString &sign : {u"gone"_s, u"Stop"_s, u"SessionEnd"_s, u"asks again"_s, u"works"_s, u"left"_s,
                                    u"noted at work"_s, u"note gone"_s, u"killed"_s}) {
            Desk desk;
            desk.refresh(listing("waiting"));
            QList<QUuid> over;
            connect(&desk.source, &AgentsSource::peekWithdrawn, this, [&over](const QUuid &peek) { over.append(peek); });
            const auto reply = [](std::optional<bool>) { return true; };
            desk.list(listing("busy")); // begun before the question, finished after it
            desk.source.refresh();
            desk.clock.advance(1ms);
            desk.source.permission(from(u"PermissionRequest"_s), 7, reply);
            HookEvent other = from(u"Stop"_s);
            other.sessionId = u"12345678-131d-43a7-b83d-daf04de24178"_s;
            desk.source.hook(other);
            desk.source.withdrawn(8);
            desk.background.finishAll();
            // A note of an earlier question doesn't count for this one, and neither does one that is half written.
            const QString note = u"/home/me/.claude/sessions/4711.json"_s;
            const auto look = [&desk] {
                desk.clock.advance(500ms);
                desk.background.finishAll();
            };
            const auto noted = [&](const QByteArray &status, std::chrono::milliseconds ago) {
                const qint64 since = desk.clock.wallTime().addMSecs(-ago.count()).toMSecsSinceEpoch();
                desk.files.contents[note] = noteOf(status, since);
                look();
            };
            noted("waiting", 501ms);
            noted("busy", 501ms);
            noted("waiting", 0ms);
            desk.files.contents[note] = "{";
            look();
            desk.refresh(listing("waiting"));
            QVERIFY(over.isEmpty());
            if (sign == u"gone"_s)
                desk.source.withdrawn(7);
            else if (sign == u"asks again"_s)
                desk.source.permission(from(u"PermissionRequest"_s), 9, reply);
            else if (sign == u"works"_s)
                desk.refresh(listing("busy"));
            else if (sign == u"left"_s)
                desk.refresh("[]");
            else if (sign == u"noted at work"_s)
                noted("busy", 0ms);
            else if (sign == u"note gone"_s)
                desk.files.contents.remove(note), look();
            else if (sign == u"killed"_s)
                desk.machine.dead.insert(4711), look();
            else
                desk.source.hook(from(sign));
            QCOMPARE(over, QList{desk.peeks[0].id});
        }
    }

    void oneQuestionIsAnnouncedOnce()
    {
        Desk desk;
        HookEvent told = from(u"Notification"_s);
        told.message = u"Claude needs your permission"_s;
        told.notification = u"permission_prompt"_s;
        desk.refresh(listing("busy"));
        desk.source.permission(from(u"PermissionRequest"_s), 1, [](std::optional<bool>) { return true; });
        desk.source.hook(told);
        desk.refresh(listing("waiting"));
        desk.peeks[0].decide(true);
        desk.clock.advance(15s);
        desk.source.hook(told);
        desk.refresh(listing("busy"));
        desk.refresh(listing("waiting"));
        QCOMPARE(desk.peeks.size(), 1);
        desk.clock.advance(1ms);
        desk.source.hook(told);
        QCOMPARE(desk.texts().last(), u"Claude needs your permission"_s);
        QCOMPARE(desk.peeks.last().beside, u"fix"_s);
        desk.refresh(listing("busy"));
        desk.refresh(listing("waiting")); // the same question
        QCOMPARE(desk.peeks.size(), 2);
        desk.clock.advance(16s);
        desk.refresh(listing("busy"));
        desk.refresh(listing("waiting"));
        QCOMPARE(desk.texts().last(), u"fix needs you"_s);
    }

    void whatIsNoLongerTrueIsTakenBack()
    {
        Desk desk;
        QSet<QString> back;
        connect(&desk.source, &AgentsSource::peeksRetracted, this, [&back](Peek::News news, const QSet<QString> &sessions) {
            if (news == Peek::News::Finished)
                back += sessions;
        });
        desk.source.hook(from(u"Stop"_s));
        desk.clock.advance(2s);
        desk.refresh(listing("busy")); // the listing doesn't have it yet
        QVERIFY(back.isEmpty());
        desk.clock.advance(1s);
        desk.refresh(listing("busy"));
        QCOMPARE(back, QSet{kSession});
    }

    void leavesTheQuestionToTheTerminal()
    {
        for (const auto &[why, peeks] : std::initializer_list<std::tuple<QString, int>>{
                 {u"off"_s, 0}, {u"com.mitchellh.ghostty"_s, 0}, {u"com.todesktop.cursor"_s, 0}, {u"words"_s, 1}}) {
            Desk desk;
            HookEvent asked = from(u"PermissionRequest"_s);
            asked.tool = why == u"words"_s ? u"AskUserQuestion"_s : u"Bash"_s;
            if (why == u"off"_s)
                desk.prefs.set(Prefs::Module::Agents, false);
            else
                desk.applications.frontmostNow = why;
            int unanswered = 0;
            desk.source.permission(asked, 1, [&unanswered](std::optional<bool> answer) {
                unanswered += !answer;
                return true;
            });
            QCOMPARE(unanswered, 1);
            QCOMPARE(desk.peeks.size(), peeks);
            if (peeks == 1) {
                QCOMPARE(desk.peeks[0].text, u"proj needs you"_s);
                QVERIFY(!desk.peeks[0].isQuestion());
            }
        }
    }
};

static const Registered<HooksTest> registered;
#include "HooksTest.moc"
