#include "Core/UI.h"
#include "StoreDesk.h"
#include "ViewWindow.h"

using namespace Qt::StringLiterals;

namespace velto {

/// The program's menu, with keys and a screen reader: in the black under the strip, and in the open panel.
class MenuTest : public ViewWindow {
    Q_OBJECT
private Q_SLOTS:
    void keysChooseAndLeave()
    {
        for (const bool expanded : {false, true}) {
            StoreDesk desk;
            UI ui(desk.clock, desk.prefs);
            QStringList chosen;
            const auto choose = [&](const QString &what) { return [&chosen, what] { chosen.append(what); }; };
            ui.setMenu({{u"Open"_s, {}, {}, choose(u"open"_s)},
                        {u"Settings…"_s, Qt::CTRL | Qt::Key_Comma, u"Ctrl+,"_s, choose(u"settings"_s)},
                        {},
                        {u"Quit"_s, Qt::CTRL | Qt::Key_Q, u"Ctrl+Q"_s, choose(u"quit"_s)}});
            ui.setExpanded(expanded);
            QVERIFY(showQml(u"import Velto.Shell\nFocusScope { id: root; anchors.fill: parent; focus: true; property var ui\n"
                            "PanelMenu { ui: root.ui; anchors.fill: parent; place: Qt.point(390, 290) } }"_s,
                            {400, 300}, {{u"ui"_s, QVariant::fromValue(&ui)}}));
            for (const bool again : {false, true}) {
                chosen.clear();
                ui.askForMenu();
                m_view->grabWindow();
                QCOMPARE(ui.menuHeight() > 100, !expanded);
                QCOMPARE(focused(), u"Open"_s);
                for (QQuickItem *item : {named(u"Open"_s), named(u"Quit"_s)}) {
                    QVERIFY(item);
                    const QPointF corner = item->mapToScene({item->width(), item->height()});
                    QVERIFY(corner.x() <= 400 && corner.y() <= 300);
                }
                QCOMPARE(nameOf(named(u"Settings…"_s), QAccessible::Description), u"Ctrl+,"_s);
                press(Qt::Key_Down); // shows where the focus is, since the pointer opened it
                QCOMPARE(focused(), u"Open"_s);
                press(Qt::Key_Down);
                press(Qt::Key_Down); // past the separator
                QCOMPARE(focused(), u"Quit"_s);
                press(Qt::Key_Down);
                QCOMPARE(focused(), u"Open"_s);
                press(Qt::Key_Tab);
                QCOMPARE(focused(), u"Settings…"_s);
                if (again) {
                    press(Qt::Key_Escape);
                } else {
                    press(Qt::Key_Return);
                    QTRY_COMPARE(chosen, QStringList{u"settings"_s});
                }
                QVERIFY(!ui.menuOpen());
                QTRY_VERIFY(!named(u"Quit"_s));
            }
            QVERIFY(chosen.isEmpty());
            ui.askForMenu();
            m_view->grabWindow();
            press(Qt::Key_Q, Qt::ControlModifier);
            QTRY_COMPARE(chosen, QStringList{u"quit"_s});
            QVERIFY(!ui.menuOpen());
            close();
        }
    }
};

const Registered<MenuTest> registered;

} // namespace velto

#include "MenuTest.moc"
