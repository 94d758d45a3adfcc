#include "Follower.h"
#include "RunTests.h"
#include "Tabs/Todos/Desk.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

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

class RowsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
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
                todos.append(makeTodo(random.bounded(12), u"t%1"_s.arg(random.bounded(3)), {}, 2, project)); // ids repeat
            }
            const TodoRows::Content content = contentOf(todos);
            model.setContent(content, {});
            QCOMPARE(follower.rows, Follower::read(model, kRoles));
            TodoRows plain;
            plain.setContent(content, {});
            QCOMPARE(follower.rows, Follower::read(plain, kRoles));
        }
    }

    void oneChangeIsOneStep()
    {
        QList<Todo> todos;
        for (int i = 0; i < 300; ++i)
            todos.append(makeTodo(i, u"t"_s));
        TodoRows model;
        model.setContent(contentOf(todos), {});
        const Follower follower(model, kRoles);
        const QPersistentModelIndex watched = model.index(251, 0);
        auto steps = [&, before = 0]() mutable {
            model.setContent(contentOf(todos), {});
            return follower.steps - std::exchange(before, follower.steps);
        };
        todos[7].title = u"changed"_s;
        QCOMPARE(steps(), 1);
        todos.move(250, 3);
        QCOMPARE(steps(), 1);
        QCOMPARE(watched.row(), 4);
        todos.remove(10);
        QCOMPARE(steps(), 1);
        QCOMPARE(steps(), 0);
        model.setContent(contentOf(todos), {Desk::kToday, Desk::kTomorrow}); // the day changes
        QCOMPARE(follower.steps, 4);
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

    void onlyTheOpenRowHasItsDetails()
    {
        Desk desk;
        Todo todo = makeTodo(1, u"<b>bold</b> & co"_s, Desk::kYesterday, 1);
        todo.details = u"details"_s;
        todo.comments = {{u"now"_s, u"said"_s}};
        TodosSource &source = desk.start({todo, makeTodo(2, u"b"_s, Desk::kToday, 3)});
        QCOMPARE(desk.role(1, TodoRows::Title), todo.title);
        QCOMPARE(desk.role(1, TodoRows::Details), QString());
        QSignalSpy changed(source.shown()->rows(), &QAbstractItemModel::dataChanged);
        source.shown()->press(u"1"_s);
        QCOMPARE(desk.role(1, TodoRows::Details), u"details"_s);
        const QVariantList comments = source.shown()->rows()->index(1, 0).data(TodoRows::Comments).toList();
        QCOMPARE(comments, QVariantList({QVariantMap{{u"at"_s, u"now"_s}, {u"text"_s, u"said"_s}}}));
        QVERIFY(source.shown()->rows()->index(1, 0).data(TodoRows::Selected).toBool());
        QCOMPARE(changed.count(), 2);
        QVERIFY(!source.shown()->rows()->index(9, 0).isValid());
    }
};

} // namespace velto

static const Registered<velto::RowsTest> registered;

#include "RowsTest.moc"
