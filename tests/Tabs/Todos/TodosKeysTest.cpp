#include "Tabs/Todos/TodosPage.h"

#include "Design/ItemAccessible.h"
#include "Shell/CollapsedStrip.h"
#include "Shell/PanelOutline.h"
#include "Shell/VeltoPanel.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QQuickItem>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace velto {

/// The tab used with the keyboard.
class TodosKeysTest : public TodosPage {
    Q_OBJECT

private Q_SLOTS:
    void theArrowsMoveTheSelection()
    {
        show(some());
        press(Qt::Key_Down);
        QCOMPARE(source().shown()->selected()->title, u"Send the invoice"_s);
        QVERIFY(focused().startsWith(u"Send the invoice"_s)); // what a screen reader reads out
        press(Qt::Key_Down);
        press(Qt::Key_Down);
        press(Qt::Key_Down);
        QCOMPARE(source().shown()->selected()->title, u"Water the plants"_s); // doesn't wrap around
        press(Qt::Key_Up);
        press(Qt::Key_Down, Qt::ShiftModifier); // not the same key
        QVERIFY(focused().startsWith(u"Renew the passport"_s));

        click(named(u"Search todos"_s));
        press(Qt::Key_Up); // out of the field
        QVERIFY(focused().startsWith(u"Send the invoice"_s));

        source().newDraft();
        m_view->grabWindow();
        press(Qt::Key_Down);
        QCOMPARE(source().shown()->selected()->title, u"Send the invoice"_s);
        QCOMPARE(focused(), u"Todo title"_s);
    }

    void returnOpensTheSelectedRow()
    {
        tellWhatIsGreyed(); // what unfolds, too
        show(some());
        press(Qt::Key_Return);
        QVERIFY(!source().shown()->openID());
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QCOMPARE(source().shown()->openID(), std::optional<qint64>(2));
        QAccessibleInterface *row = QAccessible::queryAccessibleInterface(m_view->activeFocusItem());
        QVERIFY(row->state().expanded && row->text(QAccessible::Description).startsWith(u"Details shown"_s));
        QTest::keyClick(m_view.get(), Qt::Key_Enter, Qt::KeypadModifier);
        QVERIFY(!source().shown()->openID());
        QVERIFY(row->state().collapsed);
        QCOMPARE(row->text(QAccessible::Description), u"Details hidden"_s);
        click(named(u"Search todos"_s));
        press(Qt::Key_Return);
        QVERIFY(!source().shown()->openID()); // the field took the key
        named(u"New todo"_s)->forceActiveFocus(Qt::TabFocusReason);
        press(Qt::Key_Return); // the button took the key
        QVERIFY(source().draft() && !source().shown()->openID());
        source().form()->cancel();
        press(Qt::Key_Down);
        m_ui->sheetOpened();
        press(Qt::Key_Return);
        QVERIFY(!source().shown()->openID());
    }

    void controlDFinishesAndControlZBringsBack()
    {
        show(some());
        press(Qt::Key_D, Qt::ControlModifier); // nothing is selected
        QCOMPARE(source().todos().size(), 5);
        press(Qt::Key_Down);
        press(Qt::Key_Down);
        press(Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(source().pendingDone()->title, u"Renew the passport"_s);
        QVERIFY(source().shown()->selected());
        QVERIFY(focused().startsWith(source().shown()->selected()->title));
        press(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!source().pendingDone());
        QVERIFY(row(u"Renew the passport"_s));
        press(Qt::Key_Tab);
        press(Qt::Key_Space); // on its button
        QVERIFY(source().pendingDone() && !source().shown()->selected());
        QCOMPARE(focused(), u"Todos"_s); // the focus stays nearby
        click(named(u"Undo"_s));
        QVERIFY(!source().pendingDone() && !named(u"Undo"_s));
    }

    void controlNWritesATodoByKeysAlone()
    {
        show(some());
        press(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(focused(), u"Todo title"_s);
        type(u"Pay the rent"_s);
        const auto tabTo = [this](const QString &name) {
            for (int i = 0; i < 30 && focused() != name; ++i)
                press(Qt::Key_Tab);
            return focused() == name;
        };
        QVERIFY(tabTo(u"Due date"_s));
        press(Qt::Key_Down);
        press(Qt::Key_PageDown);
        press(Qt::Key_Return);
        QCOMPARE(focused(), u"Due date"_s);
        QVERIFY(tabTo(u"Normal"_s));
        press(Qt::Key_Left);
        QCOMPARE(focused(), u"High"_s);
        QVERIFY(tabTo(u"More details"_s));
        press(Qt::Key_Space);
        QVERIFY(tabTo(u"Notes (optional)"_s));
        type(u"by"_s);
        press(Qt::Key_Return);
        type(u"bank"_s);
        press(Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(!source().draft());
        const Todo todo = source().todos().last();
        QCOMPARE(todo.title, u"Pay the rent"_s);
        QCOMPARE(todo.due, u"2026-12-21"_s);
        QCOMPARE(todo.prio, 1);
        QCOMPARE(todo.details, u"by\nbank"_s);

        // The focus returns to where Ctrl+N was pressed.
        press(Qt::Key_Down);
        const QString before = focused();
        press(Qt::Key_N, Qt::ControlModifier);
        press(Qt::Key_Escape);
        press(Qt::Key_Escape);
        QVERIFY(!source().draft());
        QCOMPARE(focused(), before);
    }

    void controlFSearches()
    {
        show(some());
        m_world->hub.open(Tab::Agents);
        press(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(m_world->hub.selected(), Tab::Todos);
        QCOMPARE(focused(), u"Search todos"_s);
        type(u"plants"_s);
        m_view->grabWindow();
        QCOMPARE(titles(), QStringList{u"Water the plants"_s});
        press(Qt::Key_Down);
        QVERIFY(focused().startsWith(u"Water the plants"_s));
        press(Qt::Key_F, Qt::ControlModifier);
        type(u"x"_s); // replaces what was there
        QCOMPARE(source().shown()->search(), u"x"_s);
    }

    void escapeGoesOneStepAtATime()
    {
        show(some());
        press(Qt::Key_F, Qt::ControlModifier); // the form doesn't give the focus back to it
        press(Qt::Key_N, Qt::ControlModifier);
        press(Qt::Key_Escape);
        QVERIFY(source().draft());
        QVERIFY(focused() != u"Todo title"_s);
        press(Qt::Key_Escape);
        QVERIFY(!source().draft());
        QVERIFY(m_ui->expanded());
        press(Qt::Key_N, Qt::ControlModifier);
        click(named(u"Choose a date"_s));
        QVERIFY(m_ui->sheetOpen());
        press(Qt::Key_Escape);
        QVERIFY(!m_ui->sheetOpen());
        QVERIFY(source().draft() && m_ui->expanded());
        click(named(u"Choose a date"_s));
        m_ui->setExpanded(false); // takes it along
        QVERIFY(!m_ui->sheetOpen());
        m_ui->setExpanded(true);
        click(named(u"Choose a date"_s));
        QVERIFY(m_ui->sheetOpen());
        source().form()->cancel(); // and so does its form
        m_view->grabWindow();
        QVERIFY(!m_ui->sheetOpen());
        press(Qt::Key_Escape);
        QVERIFY(!m_ui->expanded());
        press(Qt::Key_N, Qt::ControlModifier); // a closed panel takes no keys
        QVERIFY(!source().draft());
    }

    void otherTabsKeepTheirKeys()
    {
        show(some());
        press(Qt::Key_Down);
        m_world->hub.open(Tab::Agents);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        press(Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(source().shown()->selectedID(), std::optional<qint64>(2));
        QVERIFY(!source().shown()->openID());
        QVERIFY(!source().pendingDone());
        press(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(m_world->hub.selected(), Tab::Todos);
        QVERIFY(source().draft());
        source().form()->cancel();
        m_world->prefs.set(Prefs::Module::Todos, false);
        m_world->wait(0);
        press(Qt::Key_N, Qt::ControlModifier);
        press(Qt::Key_F, Qt::ControlModifier);
        QVERIFY(!source().draft());
        QVERIFY(m_world->hub.selected() != Tab::Todos);
    }

    void theSelectionStaysInSight()
    {
        show(many(10'000));
        const auto inSight = [this] {
            const QQuickItem *item = m_view->activeFocusItem();
            const double top = item->mapToItem(list(), {0, 0}).y();
            return top >= -1 && top + item->height() <= list()->height() + 1;
        };
        for (int i = 0; i < 60; ++i) {
            press(Qt::Key_Down);
            QCOMPARE(m_view->activeFocusItem()->property("todoId").toString(), QString::number(source().shown()->selected()->id));
            QTRY_VERIFY(inSight());
        }
        for (int i = 0; i < 60; ++i)
            press(Qt::Key_Up);
        QTRY_COMPARE(list()->property("contentY"), list()->property("originY")); // with the first heading in sight
        source().shown()->setSelectedID(std::nullopt);
        press(Qt::Key_Up); // the last one
        QTRY_VERIFY(inSight());
        QCOMPARE(source().shown()->selectedRow(), source().shown()->rows()->rowCount() - 1);
        press(Qt::Key_Return);
        QTRY_VERIFY(named(u"Add a comment"_s));
        QTRY_VERIFY(inSight()); // unfolded as well
        QVERIFY(rows().size() < 40);
    }

    void pressesThatLeadToTypingAskForTheKeyboard()
    {
        show(some());
        // The panel's own window, opened by a resting pointer: it is visible, but another window has the keyboard.
        CollapsedStrip strip({m_world->hub, m_world->clock, m_world->prefs, m_world->everyday, m_world->agents, m_world->todos});
        PanelOutline outline(m_world->hub, *m_ui, strip);
        VeltoPanel panel(m_world->clock, *m_ui, outline);
        panel.engine()->addImportPath(u"qrc:/qt/qml"_s);
        panel.setInitialProperties({{u"source"_s, QVariant::fromValue(&source())}, {u"ui"_s, QVariant::fromValue(m_ui.get())}});
        panel.setSource(source().makeView());
        panel.resize(732, 408);
        panel.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel));
        m_view->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_view.get()) && !panel.isActive());
        const QSignalSpy wanted(m_ui.get(), &UI::keyboardWanted);
        const auto pressAt = [&panel](QPoint place) {
            panel.grabWindow();
            QTest::mouseClick(&panel, Qt::LeftButton, {}, place);
        };
        pressAt({100, 15}); // another filter
        QCOMPARE(wanted.count(), 0);
        pressAt({500, 15}); // into the search field
        QVERIFY(wanted.count() > 0);
        auto before = wanted.count();
        pressAt({100, 15});
        QCOMPARE(wanted.count(), before);
        pressAt({717, 15}); // a new todo
        QVERIFY(source().draft());
        QVERIFY(wanted.count() > before);
    }
};

const Registered<TodosKeysTest> registered;

} // namespace velto

#include "TodosKeysTest.moc"
