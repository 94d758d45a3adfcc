#include "Tabs/Agents/AgentsPage.h"

using namespace Qt::StringLiterals;

namespace velto {

/// The tab used with the keyboard.
class AgentsKeysTest : public AgentsPage {
    Q_OBJECT

private Q_SLOTS:
    void closingThePanelClosesWhatIsOpenOverIt()
    {
        show(0, 2);
        m_ui->openFocused();
        QTRY_VERIFY(row(u"s0"_s));
        row(u"s0"_s)->forceActiveFocus();
        press(Qt::Key_Menu);
        QVERIFY(m_ui->sheetOpen());
        m_ui->toggle();
        QVERIFY(!m_ui->sheetOpen());
        QVERIFY(!row(u"s0"_s)->property("menuOpen").toBool());

        m_ui->toggle();
        click(button(u"Connect…"_s));
        QTRY_VERIFY(button(u"Add hooks"_s));
        m_ui->toggle();
        QVERIFY(!m_ui->sheetOpen());
        QTRY_VERIFY(!button(u"Add hooks"_s));
    }

    void theKeyboardGoesOnWhereARowGoes()
    {
        show(0, 40);
        QTRY_COMPARE(rows().size(), 6);
        const auto focusedRow = [this] {
            QQuickItem *item = m_view->activeFocusItem();
            while (item && !item->property("isAgentRow").toBool())
                item = item->parentItem();
            return item ? item->property("agentId").toString() : QString();
        };
        const QStringList before = ids();
        row(before.at(2))->forceActiveFocus();
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Down, Qt::Key_Return}) // "Hide session"
            press(key);
        QTRY_VERIFY(!row(before.at(2)));
        QCOMPARE(focusedRow(), before.at(3));

        button(u"Show 33 more"_s)->forceActiveFocus();
        const QString last = ids().last();
        press(Qt::Key_Return);
        m_view->grabWindow();
        QCOMPARE(focusedRow(), ids().at(ids().indexOf(last) + 1)); // the first new one

        // Out of sight, a recycled row neither takes keys nor passes for another row.
        list()->setProperty("contentY", list()->property("originY").toDouble() + 1500);
        m_view->grabWindow();
        QVERIFY(focusedRow().isEmpty());
        press(Qt::Key_Down);
        QVERIFY(!focusedRow().isEmpty());
        QVERIFY(row(focusedRow())->mapToItem(list(), {0, 0}).y() >= 0);
    }
};

const Registered<AgentsKeysTest> registered;

} // namespace velto

#include "AgentsKeysTest.moc"
