#include "RunTests.h"
#include "Tabs/Agents/AgentRows.h"
#include "Tabs/Agents/Desk.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace velto;

/// What the tab shows of the sessions, and what its buttons do.
class RowsTest : public QObject {
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
        desk.refresh(listing); // the same listing, but the world has changed
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
        desk.source.clearWaiting();
        QCOMPARE(desk.changes.size(), ++before);
        QCOMPARE(desk.prefs.dismissedAgentIDs(), (QSet<QString>{u"w0"_s, u"w1"_s, u"w2"_s}));
        desk.source.clearWaiting();
        QCOMPARE(desk.changes.size(), ++before); // nothing left to hide, but still announced
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
        QCOMPARE(value(rows, 1, "spoken"), u"b, waiting for you, started now ago"_s);

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

static const Registered<RowsTest> registered;
#include "RowsTest.moc"
