#include "App/AppDelegate.h"
#include "RunTests.h"
#include "Shell/CollapsedStrip.h"
#include "Shell/PanelContents.h"
#include "Shell/PanelKeys.h"
#include "Shell/UI.h"
#include "Tabs/Todos/TodosSource.h"
#include "World.h"

#include <QQuickItem>
#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace velto {

/// What the strip, the highlights and the keyboard of the open panel make of the todos.
class TodosTest : public QObject {
    Q_OBJECT

    struct Panel : World {
        UI ui{clock, prefs};
        CollapsedStrip strip{hub};
        PanelContents contents{hub};
        QQuickWindow window;
        PanelKeys keys{window, ui, contents, hub};
        TodosSource &todos = *hub.todos();

        Panel()
        {
            background.finishAll();
            ui.setExpanded(true);
        }
        void add(const QString &title, int days)
        {
            Todo todo;
            todo.title = title;
            todo.due = textOf(clock.wallTime().date().addDays(days));
            todos.save(todo);
        }
        void press(const QList<QKeyCombination> &combinations)
        {
            for (const QKeyCombination combination : combinations)
                QTest::keyClick(&window, combination.key(), combination.keyboardModifiers());
        }
        QString highlights()
        {
            QStringList texts;
            for (int i = 0; i < contents.highlights()->rowCount(); ++i)
                texts += contents.highlights()->index(i, 0).data(Qt::UserRole + 2).toString();
            return texts.join(u'|');
        }
    };

private Q_SLOTS:
    void theStripCountsWhatIsDue_data()
    {
        QTest::addColumn<QList<int>>("days");
        QTest::addColumn<int>("working");
        QTest::addColumn<int>("blocked");
        QTest::addColumn<QString>("sides");
        QTest::addColumn<QString>("spoken");
        QTest::addColumn<QString>("summary");
        QTest::newRow("later") << QList{1} << 0 << 0 << u"Nothing None"_s << u"Velto. 0 agents working"_s
                               << u"Info Nothing needs you right now"_s;
        QTest::newRow("one") << QList{0} << 0 << 0 << u"Todos None"_s << u"Velto. 1 todos due. 0 agents working"_s
                             << u"Info 1 todo due"_s;
        QTest::newRow("late") << QList{0, -1, -9} << 2 << 0 << u"Todos Working"_s
                              << u"Velto. 3 todos due, 2 overdue. 2 agents working"_s << u"Overdue 3 todos due"_s;
        QTest::newRow("a session waits") << QList{-1} << 1 << 1 << u"Todos Waiting"_s
                                         << u"Velto. 1 todos due, 1 overdue. 1 agents working, 1 waiting for you"_s
                                         << u"Waiting 1 agent need your attention"_s;
    }
    void theStripCountsWhatIsDue()
    {
        QFETCH(QList<int>, days);
        QFETCH(int, working);
        QFETCH(int, blocked);
        Panel p;
        for (const int day : days)
            p.add(u"todo"_s, day);
        p.setSessions(working, blocked);
        p.refresh();
        QTEST(QVariant::fromValue(p.strip.left()).toString() + u' ' + QVariant::fromValue(p.strip.right()).toString(), "sides");
        QTEST(p.strip.spoken(), "spoken");
        QTEST(QVariant::fromValue(p.strip.summaryTone()).toString() + u' ' + p.strip.summaryText(), "summary");
        const auto right = p.strip.right(); // which the dot of a recording leaves alone
        p.applications.setRunning({u"com.obsproject.obs-studio"_s});
        QCOMPARE(p.strip.left(), CollapsedStrip::Left::Recording);
        QCOMPARE(p.strip.right(), right);
        p.applications.setRunning({});
        p.prefs.set(Prefs::Module::Todos, false);
        p.wait(0);
        QCOMPARE(p.strip.todos(), 0);
        QVERIFY(!p.strip.overdue());
        QVERIFY(p.strip.left() != CollapsedStrip::Left::Todos);
        QVERIFY(!p.highlights().contains(u"due"_s));
    }

    void midnightReachesTheStrip()
    {
        Panel p;
        p.add(u"tomorrow"_s, 1);
        QVERIFY(p.strip.quiet());
        p.wait(15 * 3'600'000); // from nine to midnight
        QCOMPARE(p.strip.todos(), 1);
        QVERIFY(!p.strip.overdue());
        QCOMPARE(p.highlights(), u"1 due"_s);
        p.wait(24 * 3'600'000);
        QVERIFY(p.strip.overdue());
    }

    void keysOfTheList()
    {
        Panel p;
        p.add(u"a"_s, 0);
        p.add(u"b"_s, 0);
        p.press({Qt::Key_Down, Qt::Key_Return, Qt::CTRL | Qt::Key_D});
        QVERIFY(!p.todos.selectedID()); // another tab is on show
        QCOMPARE(p.todos.todos().size(), 2);

        p.hub.open(Tab::Todos);
        p.press({Qt::Key_Down, Qt::Key_Return});
        QCOMPARE(p.todos.openID(), std::optional<qint64>(1));
        p.press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
        QCOMPARE(p.todos.openID(), std::optional<qint64>(2));
        p.press({Qt::Key_Up, Qt::CTRL | Qt::Key_D});
        QCOMPARE(p.todos.undoText(), u"Done: a"_s);
        QCOMPARE(p.todos.selectedID(), std::optional<qint64>(2));
        p.press({Qt::CTRL | Qt::Key_Z});
        QCOMPARE(p.todos.todos().size(), 2);
        QTest::keyEvent(QTest::Press, &p.window, Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(p.todos.selectedID(), std::optional<qint64>(2));
        p.ui.setExpanded(false);
        p.press({Qt::Key_Up});
        QCOMPARE(p.todos.selectedID(), std::optional<qint64>(2));
    }

    void aTabThatGoesTakesItsFocusAlong()
    {
        Panel p;
        QQuickItem page(p.window.contentItem());
        QQuickItem field(&page);
        p.window.show();
        p.window.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&p.window));
        p.hub.open(Tab::Todos);
        field.forceActiveFocus();
        QCoreApplication::processEvents();
        QCOMPARE(p.window.activeFocusItem(), &field);
        p.hub.open(Tab::Agents);
        page.setVisible(false);
        QTRY_VERIFY(p.window.activeFocusItem() != &field);
        QVERIFY(!field.hasFocus());
    }

    void keysThatLeadToTheList()
    {
        Panel p;
        p.press({Qt::CTRL | Qt::Key_N});
        QCOMPARE(p.hub.selected(), Tab::Todos);
        QVERIFY(p.todos.form()->shown());
        p.add(u"a"_s, 0); // the form was empty, and is gone with the save
        p.press({Qt::CTRL | Qt::Key_N, Qt::Key_Down});
        QVERIFY(!p.todos.selectedID()); // the arrows belong to the form
        p.press({Qt::Key_Escape});
        QVERIFY(!p.todos.form()->shown());
        QVERIFY(p.ui.expanded());
        p.hub.open(Tab::Home);
        p.press({Qt::CTRL | Qt::Key_F});
        QCOMPARE(p.hub.selected(), Tab::Todos);
        QCOMPARE(p.todos.focusSearch(), 1);
        p.prefs.set(Prefs::Module::Todos, false);
        p.wait(0);
        p.press({Qt::CTRL | Qt::Key_N, Qt::CTRL | Qt::Key_F});
        QVERIFY(!p.todos.form()->shown());
        QCOMPARE(p.todos.focusSearch(), 1);
        p.press({Qt::Key_Escape});
        QVERIFY(!p.ui.expanded());
    }

    void returnIsLeftToAControlWithTheFocus()
    {
        Panel p;
        p.add(u"a"_s, 0);
        p.hub.open(Tab::Todos);
        QQuickItem control(p.window.contentItem());
        p.window.show();
        p.window.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&p.window));
        p.press({Qt::Key_Down});
        control.setProperty("takesReturn", true);
        control.forceActiveFocus();
        p.press({Qt::Key_Return});
        QVERIFY(!p.todos.openID());
        p.press({Qt::Key_Down, Qt::Key_Return}); // the arrow takes the focus away from it
        QCOMPARE(p.todos.openID(), std::optional<qint64>(1));
        p.ui.sheetOpened();
        p.press({Qt::Key_Return});
        QCOMPARE(p.todos.openID(), std::optional<qint64>(1));
    }
};

const Registered<TodosTest> registered;

} // namespace velto

#include "TodosTest.moc"
