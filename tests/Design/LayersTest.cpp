#include "ViewWindow.h"

using namespace Qt::StringLiterals;

namespace velto {

namespace {

const QString kMenu = u"Item { id: root; width: 400; height: 300\n"
                      "property int chosen: -1\n"
                      "property alias open: menu.active\n"
                      "PillButton { id: other; text: 'other'; y: 200 }\n"
                      "PillButton { id: button; text: 'button'; onClicked: menu.active = true }\n"
                      "Loader { id: menu; active: false\n"
                      "  sourceComponent: PopupMenu { target: button; entries: ['one', 'two', 'three']\n"
                      "    onChosen: index => root.chosen = index; onClosed: menu.active = false } }\n}"_s;

} // namespace

/// The order of Tab, and what lies over everything else: menus.
class LayersTest : public ViewWindow {
    Q_OBJECT
private Q_SLOTS:
    void tabPassesAScrolledListAsOne()
    {
        show(u"Item { width: 400; height: 300\n"
             "PillButton { text: 'above' }\n"
             "ListView { y: 50; width: 400; height: 200; cacheBuffer: 200; model: 100; contentY: 1000; clip: true\n"
             "  delegate: PillButton { required property int index; text: 'row ' + index } }\n"
             "PillButton { text: 'below'; y: 270 }\n}"_s);
        QTest::qWait(50); // rows outside the window are created later
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"above"_s);
        press(Qt::Key_Tab);
        QVERIFY2(focused().startsWith(u"row"), qPrintable(focused()));
        press(Qt::Key_Backtab);
        press(Qt::Key_Backtab);
        QCOMPARE(focused(), u"below"_s);
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"above"_s);
    }

    void aMenuIsWorkedByKeys()
    {
        show(kMenu);
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"button"_s);
        press(Qt::Key_Return);
        QVERIFY(m_root->property("open").toBool());
        QCOMPARE(focused(), u"one"_s);
        press(Qt::Key_Up);
        QCOMPARE(focused(), u"three"_s); // wraps around
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"one"_s); // never leaves the menu
        press(Qt::Key_Escape);
        QVERIFY(!m_root->property("open").toBool());
        QCOMPARE(m_root->property("chosen").toInt(), -1);
        QCOMPARE(focused(), u"button"_s);
        press(Qt::Key_Return);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QVERIFY(!m_root->property("open").toBool());
        QCOMPARE(m_root->property("chosen").toInt(), 1);
        QCOMPARE(focused(), u"button"_s);
    }

    void aMenuClosesByAPressElsewhere()
    {
        show(kMenu);
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, {20, 10});
        QVERIFY(m_root->property("open").toBool());
        m_view->grabWindow();
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, {350, 280});
        QVERIFY(!m_root->property("open").toBool());
        QCOMPARE(m_root->property("chosen").toInt(), -1);
        QVERIFY(focused().isEmpty()); // pointer users see no ring
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, {20, 10});
        QVERIFY(m_root->property("open").toBool());
        close(); // an open one is destroyed with its window without a crash
    }

private:
    void show(const QString &qml) { QVERIFY(m_root = showQml(qml, {400, 300})); }

    QQuickItem *m_root = nullptr;
};

const Registered<LayersTest> registered;

} // namespace velto

#include "LayersTest.moc"
