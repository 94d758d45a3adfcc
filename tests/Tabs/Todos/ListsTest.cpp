#include "Follower.h"
#include "RunTests.h"
#include "Tabs/Todos/Desk.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velto {

namespace {

TodoRows::Content contentOf(const QList<Todo> &todos)
{
    TodoRows::Content content{todos, {}, {}};
    for (qsizetype i = 0; i < todos.size(); ++i) {
        if (!content.projects.contains(todos[i].project)) {
            content.rows.append({-1, content.projects.size()});
            content.projects.append(todos[i].project);
        }
        content.rows.append({i, -1});
    }
    return content;
}

const QList<int> kRoles{TodoRows::RowId, TodoRows::Title};

} // namespace

/// What is listed, in which order, and how a view follows it row by row.
class ListsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void theMostUrgentStandsFirst()
    {
        Desk desk;
        desk.start({
            makeTodo(9, u"no date"_s),
            makeTodo(8, u"b"_s, Desk::kTomorrow),
            makeTodo(7, u"beta's"_s, Desk::kTomorrow, 2, u"beta"_s),
            makeTodo(6, u"urgent"_s, {}, 1, u"beta"_s),
            makeTodo(5, u"a"_s, Desk::kTomorrow, 2, u"other"_s),
            makeTodo(4, u"private"_s, {}, 1, {}, u"personal"_s),
        });
        desk.source->shown()->setFilter(Filter::All);
        QCOMPARE(desk.shown(),
                 QStringList({u"[beta]"_s, u"urgent"_s, u"beta's"_s, u"[No project]"_s, u"a"_s, u"b"_s, u"no date"_s}));
        QCOMPARE(titlesOf(desk.source->shown()->flat()), QStringList({u"urgent"_s, u"beta's"_s, u"a"_s, u"b"_s, u"no date"_s}));
        QCOMPARE(desk.source->shown()->groups().value(1).project, u"other"_s);
    }

    void searchLooksAtTitlesDetailsPeopleProjectsAndNumbers()
    {
        Todo ship = makeTodo(12, u"Ship it"_s, Desk::kToday);
        ship.details = u"First line\nsecond LINE"_s;
        ship.comments = {{u"now"_s, u"a remark"_s}};
        Todo ask = makeTodo(123, u"Ask"_s);
        ask.who = u"Kim"_s;
        Desk desk;
        desk.start({ship, ask, makeTodo(5, u"Dig"_s, {}, 3, u"Garden"_s)});
        desk.source->shown()->setFilter(Filter::All);
        for (const auto &[search, found] : {std::pair(QString(), u"12 123 5"_s),
                                            {u"SHIP"_s, u"12"_s},
                                            {u"second line"_s, u"12"_s},
                                            {u"kim"_s, u"123"_s},
                                            {u"garden"_s, u"5"_s},
                                            {u"#12"_s, u"12 123"_s},
                                            {u" ship"_s, QString()},
                                            {u"remark"_s, QString()},
                                            {u"2026"_s, QString()},
                                            {u"office"_s, QString()},
                                            {u"itfirst"_s, QString()}}) {
            for (qsizetype typed = 0; typed <= search.size(); ++typed)
                desk.source->shown()->setSearch(search.first(typed));
            QStringList ids;
            for (const Todo &todo : desk.source->shown()->flat())
                ids += QString::number(todo.id);
            ids.sort();
            QCOMPARE(ids.join(u' '), found);
            QCOMPARE(desk.source->badge(), 1);
            QCOMPARE(desk.source->shown()->count(u"office"_s), 3);
        }
    }

    void countsAndSummary()
    {
        Desk desk;
        desk.start({
            makeTodo(1, u"late"_s, Desk::kYesterday, 1),
            makeTodo(2, u"private, late"_s, Desk::kYesterday, 2, {}, u"personal"_s),
            makeTodo(3, u"later"_s, Desk::kTomorrow, 1),
            makeTodo(4, u"elsewhere"_s, Desk::kToday, 1, {}, u"club"_s),
        });
        TodosSource &source = *desk.source;
        QCOMPARE(source.badge(), 3);
        QCOMPARE(source.overdueCount(), 2);
        QCOMPARE(source.shown()->summary(), u"1 due today · 1 overdue · 1 high priority"_s);
        QVERIFY(source.shown()->summaryUrgent());
        QVERIFY(source.shown()->showsScopes());
        QCOMPARE(desk.summaryOf(source.shown()->scopeRows()), u"*Work 1|Personal 1"_s);
        QCOMPARE(desk.summaryOf(source.shown()->filterRows()), u"*Today|Overdue|Upcoming|All"_s);
        source.shown()->chooseFilter(u"Upcoming"_s);
        QCOMPARE(desk.summaryOf(source.shown()->scopeRows()), u"*Work 1|Personal 0"_s);
        source.shown()->chooseFilter(u"All"_s);
        source.shown()->chooseScope(u"personal"_s);
        QCOMPARE(desk.summaryOf(source.shown()->scopeRows()), u"Work 2|*Personal 1"_s);
        QCOMPARE(source.shown()->summary(), u"1 due today · 1 overdue"_s);
        source.shown()->chooseScope(u"club"_s);
        QCOMPARE(source.shown()->summary(), u"1 due today · 1 high priority"_s);
        QVERIFY(!source.shown()->summaryUrgent());
        source.shown()->chooseScope(u"nowhere"_s);
        QCOMPARE(source.shown()->summary(), u"Nothing due today"_s);
    }

    void midnightPasses()
    {
        Desk desk;
        desk.start({makeTodo(1, u"today"_s, Desk::kToday), makeTodo(2, u"tomorrow"_s, Desk::kTomorrow)});
        QCOMPARE(desk.shown(), QStringList({u"[No project]"_s, u"today"_s}));
        desk.changes->clear();
        desk.wait(15h - 1ms);
        QCOMPARE(desk.changes->count(), 0);
        desk.wait(1ms);
        QCOMPARE(desk.shown(), QStringList({u"[No project]"_s, u"today"_s, u"tomorrow"_s}));
        QCOMPARE(desk.role(1, TodoRows::DueText), u"Overdue · Sat, Nov 21"_s);
        QCOMPARE(desk.role(2, TodoRows::DueText), u"Today"_s);
        QCOMPARE(desk.source->shown()->summary(), u"2 due today · 1 overdue"_s);
        QCOMPARE(desk.changes->count(), 1);
        desk.wait(24h);
        QCOMPARE(desk.source->overdueCount(), 2);
        // The machine slept, so no timer fired.
        desk.clock.setWallTime(QDateTime(QDate(2026, 11, 21), QTime(9, 0)));
        desk.source->refresh();
        QCOMPARE(desk.source->overdueCount(), 0);
    }

    void onlyRealChangesAreAnnounced()
    {
        Desk desk;
        TodosSource &source = desk.start({makeTodo(1, u"a"_s, Desk::kToday)});
        const QSignalSpy changes(source.shown(), &ShownTodos::changed);
        source.refresh();
        source.shown()->setFilter(Filter::Today);
        source.shown()->chooseFilter(u"Nonsense"_s);
        source.shown()->setSearch({});
        source.dismissError();
        desk.clock.advance(60s);
        QCOMPARE(desk.changes->count() + changes.count(), 0);
        QCOMPARE(desk.clock.pendingTimers(), 1); // only the one for midnight: nothing else wakes the machine
        source.shown()->setFilter(Filter::All);
        QCOMPARE(changes.count(), 1);
    }

    void aViewThatFollowsSeesEveryList()
    {
        QRandomGenerator random(20261121);
        TodoRows model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        Follower follower(model, kRoles);
        for (int round = 0; round < 400; ++round) {
            QList<Todo> todos;
            for (int i = 0, count = random.bounded(16); i < count; ++i) {
                const QString project = u"p%1"_s.arg(random.bounded(3));
                todos.append(makeTodo(random.bounded(12), u"t%1"_s.arg(random.bounded(3)), {}, 2, project)); // numbers repeat
            }
            const TodoRows::Content content = contentOf(todos);
            model.setContent(content, {});
            QCOMPARE(follower.rows, Follower::read(model, kRoles));
            TodoRows plain;
            plain.setContent(content, {});
            QCOMPARE(follower.rows, Follower::read(plain, kRoles));
        }
    }

    void anotherListIsFewStepsAndKeepsTheOpenRow()
    {
        QList<Todo> all;
        for (int i = 0; i < 2000; ++i)
            all.append(makeTodo(i, u"t"_s));
        QList<Todo> even;
        std::ranges::copy_if(all, std::back_inserter(even), [](const Todo &todo) { return todo.id % 2 == 0; });
        TodoRows model;
        model.setContent(contentOf(even), {});
        model.setOpen(500);
        model.setCommentText(500, u"half a sent"_s);
        const QPersistentModelIndex open = model.index(model.placeOf(500), 0);
        const Follower follower(model, kRoles);
        model.setContent(contentOf(all), {});
        model.setContent(contentOf(even), {});
        QVERIFY2(follower.steps <= 8, qPrintable(QString::number(follower.steps)));
        QVERIFY(open.isValid());
        QCOMPARE(open.row(), model.placeOf(500));
        QCOMPARE(open.data(TodoRows::CommentText), u"half a sent"_s);
    }
};

} // namespace velto

static const Registered<velto::ListsTest> registered;

#include "ListsTest.moc"
