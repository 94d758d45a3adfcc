#include "Platform/Linux/QtDisplays.h"
#include "Platform/Linux/X11/LockModifiers.h"
#include "RunTests.h"

using namespace velto;

namespace {

constexpr xcb_keysym_t kNumLock = 0xff7f;
constexpr xcb_keysym_t kScrollLock = 0xff14;
constexpr xcb_keysym_t kAltLeft = 0xffe9;

} // namespace

/// How the modifier map and the desktop's panels are read.
class KeyboardTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void locksOfTheUsualMap()
    {
        ModifierSymbols map;
        map[3] = {kAltLeft};
        map[4] = {0, kNumLock};
        QCOMPARE(altModifier(map), quint16(XCB_MOD_MASK_1));
        QCOMPARE(lockModifiers(map), quint16(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2));
        map[5] = {kScrollLock};
        QCOMPARE(lockModifiers(map), quint16(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2 | XCB_MOD_MASK_3));
    }
    void altElsewhere()
    {
        ModifierSymbols map;
        map[6] = {kAltLeft, kNumLock};
        QCOMPARE(altModifier(map), quint16(XCB_MOD_MASK_4));
        // A lock on Alt's own modifier must not take away Alt's meaning.
        QCOMPARE(lockModifiers(map), quint16(XCB_MOD_MASK_LOCK));
    }
    void panelsOfSeveralDisplays()
    {
        const QRect left(0, 0, 1920, 1080);
        const QRect right(1920, 200, 1280, 800);
        const QList<TopStrut> struts{{28, 0, 1919}, {236, 1920, 3199}};
        QCOMPARE(topPanelHeight(struts, left), 28);
        QCOMPARE(topPanelHeight(struts, right), 36);
        QCOMPARE(topPanelHeight({}, left), 0);
        QCOMPARE(topPanelHeight({{28, 0, 1919}}, right), 0);
        QCOMPARE(statusBarThicknessFor(0), 24.0);
        QCOMPARE(statusBarThicknessFor(32), 32.0);
        QCOMPARE(statusBarThicknessFor(400), 24.0);
    }
};

static const Registered<KeyboardTest> kAdded;
#include "KeyboardTest.moc"
