#include "OtherProgram.h"
#include "Platform/Linux/X11/XcbHotKey.h"
#include "RunTests.h"
#include "VirtualDesktop.h"

#include <array>

using namespace velto;
using namespace Qt::StringLiterals;

namespace {

constexpr xcb_keycode_t kKeyOfN = 57;
constexpr quint16 kControlAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;

} // namespace

/// Control-Alt-N works whichever locks are on, once for each press; and a key that is taken is reported.
class HotKeyTest : public QObject {
    Q_OBJECT
    XcbServer m_server;

    /// Whether another program could have that key with Control and Alt.
    static bool isFree(const OtherProgram &other, xcb_keycode_t code)
    {
        const auto grab = xcb_grab_key_checked(other.connection(), 0, other.root(), kControlAlt, code, XCB_GRAB_MODE_ASYNC,
                                               XCB_GRAB_MODE_ASYNC);
        const XcbReply<xcb_generic_error_t> refusal(xcb_request_check(other.connection(), grab));
        xcb_ungrab_key(other.connection(), code, other.root(), kControlAlt);
        other.focus(); // a round trip
        return !refusal;
    }

private Q_SLOTS:
    void pressedUnderLocks()
    {
        int presses = 0;
        XcbHotKey key(m_server);
        QVERIFY(key.registerHotKey([&] { ++presses; }));
        const QStringList press{u"key"_s, u"ctrl+alt+n"_s};
        int expected = 0;
        for (const auto &lock : {QString(), u"Num_Lock"_s, u"Caps_Lock"_s}) {
            if (!lock.isEmpty())
                VirtualDesktop::act({u"key"_s, lock});
            VirtualDesktop::act(press);
            ++expected;
            QTRY_COMPARE(presses, expected);
        }
        VirtualDesktop::act({u"key"_s, u"Caps_Lock"_s, u"Num_Lock"_s});
        // Without Alt it belongs to other programs.
        VirtualDesktop::act({u"key"_s, u"ctrl+n"_s});
        VirtualDesktop::act(press);
        ++expected;
        QTRY_COMPARE(presses, expected);
    }
    void takenByAnother()
    {
        auto other = std::make_unique<OtherProgram>();
        // Only the combination with Num Lock is taken: half a key is none.
        xcb_grab_key(other->connection(), 0, other->root(), kControlAlt | XCB_MOD_MASK_2, kKeyOfN, XCB_GRAB_MODE_ASYNC,
                     XCB_GRAB_MODE_ASYNC);
        other->focus(); // a round trip: the grab is in place
        XcbHotKey key(m_server);
        QVERIFY(!key.registerHotKey([] {}));
        QVERIFY(isFree(OtherProgram(), kKeyOfN));
        other.reset();
        QTRY_VERIFY(key.registerHotKey([] {}));
    }
    void anotherLayoutLetsTheOldKeyGo()
    {
        constexpr xcb_keycode_t kKeyOfX = 53;
        OtherProgram other;
        const auto map = [&](xcb_keycode_t code, xcb_keysym_t letter) {
            const std::array<xcb_keysym_t, 2> symbols{letter, letter - 0x20};
            xcb_change_keyboard_mapping(other.connection(), 1, code, quint8(symbols.size()), symbols.data());
            other.focus();
        };
        XcbHotKey key(m_server);
        QVERIFY(key.registerHotKey([] {}));
        QVERIFY(!isFree(other, kKeyOfN) && isFree(other, kKeyOfX));
        map(kKeyOfN, 'x');
        map(kKeyOfX, 'n');
        QTRY_VERIFY(isFree(other, kKeyOfN) && !isFree(other, kKeyOfX));
        map(kKeyOfX, 'x');
        map(kKeyOfN, 'n');
    }
    void heldDown()
    {
        int presses = 0;
        XcbHotKey key(m_server);
        QVERIFY(key.registerHotKey([&] { ++presses; }));
        const auto send = [this](bool pressed, quint32 time) { Q_EMIT m_server.keyChanged(pressed, kKeyOfN, time); };
        // What arrives at a program that asked for detectable auto-repeat ...
        for (const quint32 time : {1000U, 1660U, 1690U, 1720U})
            send(true, time);
        send(false, 1750);
        QCoreApplication::processEvents();
        QCOMPARE(presses, 1);
        // ... and to one that didn't.
        send(true, 3000);
        send(false, 3660);
        send(true, 3660);
        send(false, 3700);
        QCoreApplication::processEvents();
        QCOMPARE(presses, 2);
        // A quick second press counts, and so does a press after one whose release was lost.
        send(true, 3750);
        send(true, 9000);
        QCoreApplication::processEvents();
        QCOMPARE(presses, 4);
    }
};

static const Registered<HotKeyTest> kAdded;
#include "HotKeyTest.moc"
