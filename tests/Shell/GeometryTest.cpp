#include "RunTests.h"
#include "Shell/PanelGeometry.h"

#include <QPainterPath>

using namespace Qt::StringLiterals;

namespace velto {

/// Where the window is placed, on any set of displays.
class GeometryTest : public QObject {
    Q_OBJECT

    static Display display(const QRectF &frame, bool main = true)
    {
        Display display;
        display.frame = frame;
        display.main = main;
        return display;
    }
    static Display laptop()
    {
        Display laptop = display({0, 0, 1512, 982}, false);
        laptop.safeAreaTop = 32;
        laptop.auxiliaryTopLeft = QRectF(0, 0, 663, 32);
        laptop.auxiliaryTopRight = QRectF(848, 0, 664, 32);
        return laptop;
    }

private Q_SLOTS:
    void standsOnTheDisplayWithAHousingElseOnTheMainOne()
    {
        const Display left = display({-1920, 0, 1920, 1080}, false);
        const Display main = display({0, 0, 2560, 1440});
        QCOMPARE(*chooseDisplay({left, main, laptop()}), laptop());
        QCOMPARE(*chooseDisplay({left, main}), main);
        QCOMPARE(*chooseDisplay({left}), left);
        QVERIFY(!chooseDisplay({}));
        QCOMPARE(measureHousing(laptop()), QSizeF(185, 32));
        QCOMPARE(measureHousing(main), QSizeF(120, 24));
        QCOMPARE(panelSize({300, 32}, PanelSize::Peeking), QSizeF(624, 68)); // wider, as the housing is
        QCOMPARE(hangFrom(left, panelSize({120, 24}, PanelSize::Collapsed)), QRect(-1072, 0, 224, 24));
    }

    void theOpenPanelGrowsWithItsLettersAndLeavesThePointerSomewhereToGo()
    {
        QCOMPARE(expandedSize({1440, 900}, 1), QSizeF(780, 520));
        QCOMPARE(expandedSize({1440, 900}, 1.5), QSizeF(1170, 780));
        QCOMPARE(expandedSize({1440, 900}, 2), QSizeF(1312, 836));
        QCOMPARE(expandedSize({3840, 2160}, 2), QSizeF(1560, 1040));
        QCOMPARE(expandedSize({840, 560}, 2), QSizeF(780, 520)); // never smaller because of it
        QCOMPARE(expandedSize({640, 400}, 2), QSizeF(640, 400));
    }

    void theRowGrowsWithItsLettersAndNeverGetsNarrower()
    {
        QCOMPARE(peekRowSize({1440, 900}, 1), QSizeF(520, 36));
        QCOMPARE(peekRowSize({1440, 900}, 1.5), QSizeF(780, 46));
        QCOMPARE(peekRowSize({1366, 768}, 2), QSizeF(1040, 56));
        QCOMPARE(peekRowSize({640, 400}, 2), QSizeF(520, 56));
        QCOMPARE(peekRowSize({400, 300}, 2), QSizeF(400, 56));
        QCOMPARE(mostUnfolded(900, 1), 300.0);
        QCOMPARE(mostUnfolded(768, 2), 600.0);
        QCOMPARE(mostUnfolded(400, 2), 240.0);
        QCOMPARE(panelSize({120, 24}, PanelSize::Unfolded, {1040, 56}, 100), QSizeF(1040, 180));
    }

    void neverLeavesASmallDisplay()
    {
        const Display tiny = display({100, 50, 640, 300});
        QCOMPARE(hangFrom(tiny, panelSize({120, 24}, PanelSize::Expanded)), QRect(100, 50, 640, 300));
        const Display none = display({0, 0, 0, 0});
        QVERIFY(hangFrom(none, panelSize({120, 24}, PanelSize::Expanded)).isValid());
    }

    void theOutlineFlaresAtTheTopAndRoundsAtTheBottom()
    {
        const QPainterPath path = veltoOutline({0, 0, 289, 32}, {6, 10});
        QCOMPARE(path.boundingRect(), QRectF(0, 0, 289, 32));
        QVERIFY(path.contains(QPointF(144, 16)));
        QVERIFY(!path.contains(QPointF(3, 16))); // beside the flare
        QVERIFY(path.contains(QPointF(7, 16)));
        QVERIFY(!path.contains(QPointF(7, 31))); // the rounded corner
        QVERIFY(veltoOutline({0, 0, 0, 0}, {14, 26}).boundingRect().isEmpty());
    }
};

const Registered<GeometryTest> registered;

} // namespace velto

#include "GeometryTest.moc"
