#include "OtherProgram.h"
#include "Platform/Linux/X11/XcbPanelWindow.h"
#include "RunTests.h"
#include "VirtualDesktop.h"

#include <QKeyEvent>
#include <QRasterWindow>
#include <QSignalSpy>

using namespace velto;
using namespace Qt::StringLiterals;

namespace {

class Strip final : public QRasterWindow {
public:
    QString typed;

protected:
    void keyPressEvent(QKeyEvent *event) override { typed += event->text(); }
};

} // namespace

/// The strip stays on top of everything, has the keyboard only when it asks, and gives it back.
class PanelWindowTest : public QObject {
    Q_OBJECT
    std::unique_ptr<XcbServer> m_server;
    std::unique_ptr<XcbPanelWindow> m_panel;
    std::unique_ptr<Strip> m_strip;
    std::unique_ptr<OtherProgram> m_other;

    void makeStrip(FocusMethod method)
    {
        m_strip = std::make_unique<Strip>();
        m_panel = std::make_unique<XcbPanelWindow>(*m_server, method);
        m_panel->adopt(m_strip.get());
        m_panel->place(QRect(495, 0, 289, 32));
    }
    xcb_window_t id() const { return xcb_window_t(m_strip->winId()); }

private Q_SLOTS:
    void init()
    {
        m_other = std::make_unique<OtherProgram>();
        m_server = std::make_unique<XcbServer>();
        makeStrip(FocusMethod::InputFocus);
    }
    void cleanup()
    {
        m_strip.reset();
        m_panel.reset();
        m_server.reset();
        m_other.reset();
    }

    void staysBelowItsOwnMenu()
    {
        m_strip->show();
        QTRY_COMPARE(m_other->top(), id());
        QRasterWindow menu;
        menu.setFlags(Qt::Popup);
        menu.setGeometry(640, 10, 200, 100);
        menu.show();
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        m_panel->raise();
        QTest::qWait(50);
        QCOMPARE(m_other->top(), xcb_window_t(menu.winId()));
    }
    void givesWayToOneThatInsists()
    {
        // Once the window manager names this window it has finished.
        const auto before = m_other->open(QRect(700, 400, 100, 100), QByteArray("b\0B\0", 4));
        const auto active = [this] { return m_server->values(m_server->root(), m_server->atom(XcbAtom::ActiveWindow)); };
        QTRY_COMPARE(active(), std::vector<quint32>{before});
        m_strip->show();
        QTRY_COMPARE(m_other->top(), id());
        const auto locker = m_other->open(QRect(0, 0, 1280, 800), QByteArray("lock\0Lock\0", 10), false, false);
        QTRY_COMPARE(m_other->top(), id());
        // After that it doesn't come back, or both would go on for ever. A late property of the window manager counts as a
        // change, and may bring it back once more.
        const auto stays = [&] {
            m_other->raise(locker);
            QTest::qWait(50);
            return m_other->top() == locker;
        };
        QVERIFY(stays() || stays() || stays());
        // A change of the active window is a reason to come back.
        const auto window = m_other->open(QRect(100, 100, 200, 200), QByteArray("w\0W\0", 4));
        QTRY_COMPARE(m_other->focus(), window);
        QTRY_COMPARE(m_other->top(), id());
    }
    void keyboardTakenAndReturned()
    {
        const auto editor = m_other->open(QRect(100, 100, 400, 300), QByteArray("e\0E\0", 4));
        QTRY_COMPARE(m_other->focus(), editor);
        for (const auto road : {FocusMethod::InputFocus, FocusMethod::ManagedWindow}) {
            makeStrip(road);
            m_panel->takeFocus(); // requested before the window is on screen
            m_strip->show();
            QTRY_VERIFY(m_strip->isActive());
            QTRY_COMPARE(m_other->focus() == id(), road == FocusMethod::InputFocus);
            QCOMPARE(m_other->top(), id());
            QVERIFY(VirtualDesktop::act({u"key"_s, u"h"_s, u"i"_s}));
            QTRY_COMPARE(m_strip->typed, u"hi"_s);
            m_panel->returnFocus();
            QTRY_COMPARE(m_other->focus(), editor);
            QTRY_VERIFY(!m_strip->isActive());
            // A strip that is hidden doesn't keep the keyboard.
            m_panel->takeFocus();
            QTRY_VERIFY(m_strip->isActive());
            m_strip->hide();
            QTRY_COMPARE(m_other->focus(), editor);
        }
        // Once another window has the focus there is nothing to return.
        m_strip->show();
        m_panel->takeFocus();
        QTRY_VERIFY(m_strip->isActive());
        const auto second = m_other->open(QRect(600, 100, 400, 300), QByteArray("s\0S\0", 4));
        QTRY_COMPARE(m_other->focus(), second);
        m_panel->returnFocus();
        QCOMPARE(m_other->focus(), second);
    }
    void keyboardOfAWindowThatWent()
    {
        const auto first = m_other->open(QRect(100, 100, 400, 300), QByteArray("f\0F\0", 4));
        QTRY_COMPARE(m_other->focus(), first);
        m_strip->show();
        QTRY_VERIFY(m_strip->isExposed());
        m_panel->takeFocus();
        QTRY_COMPARE(m_other->focus(), id());
        m_other->close(first);
        QTRY_VERIFY(!m_server->viewable(first));
        m_panel->returnFocus();
        QVERIFY(m_other->focus() != id());
        QVERIFY(m_other->focus() != first);
    }
    void pressesElsewhere()
    {
        m_strip->show();
        QTRY_VERIFY(m_strip->isExposed());
        const QSignalSpy elsewhere(m_panel.get(), &PanelWindow::pressedElsewhere);
        const QSignalSpy any(m_server.get(), &XcbServer::buttonPressed);
        m_panel->watchPresses(true);
        VirtualDesktop::act({u"mousemove"_s, u"640"_s, u"10"_s, u"click"_s, u"1"_s});
        QTRY_COMPARE(any.size(), 1);
        QCOMPARE(elsewhere.size(), 0);
        // On the bare desktop the focus doesn't change. A turn of the wheel is no press.
        VirtualDesktop::act({u"mousemove"_s, u"200"_s, u"700"_s, u"click"_s, u"4"_s, u"click"_s, u"3"_s});
        QTRY_COMPARE(elsewhere.size(), 1);
        m_panel->watchPresses(false);
        VirtualDesktop::act({u"click"_s, u"1"_s});
        QTest::qWait(50);
        QCOMPARE(elsewhere.size(), 1);
        VirtualDesktop::act({u"key"_s, u"Escape"_s});
    }
    void compositorComesAndGoes()
    {
        m_strip->show();
        QVERIFY(!m_panel->composited());
        const QSignalSpy changes(m_panel.get(), &PanelWindow::compositedChanged);
        auto compositor = std::make_unique<OtherProgram>();
        const auto owner = compositor->open(QRect(0, 0, 1, 1), "c", false, false);
        xcb_set_selection_owner(compositor->connection(), owner, compositor->atom("_NET_WM_CM_S0"), XCB_CURRENT_TIME);
        xcb_flush(compositor->connection());
        QTRY_VERIFY(m_panel->composited());
        compositor.reset();
        QTRY_VERIFY(!m_panel->composited());
        QCOMPARE(changes.size(), 2);
    }
};

static const Registered<PanelWindowTest> kAdded;
#include "PanelWindowTest.moc"
