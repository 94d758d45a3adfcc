#include "ViewWindow.h"

#include "Design/Theme.h"

#include <QQuickRenderControl>
#include <QQuickRenderTarget>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace velto {

/// What the eye sees of text, symbols and edges, measured in device pixels at the scale the program was started with.
class PixelsTest : public ViewWindow {
    Q_OBJECT
private Q_SLOTS:
    /// The middle of the capitals is level with the middle of what is beside or around them, to within whole pixels.
    void capitalsAreLevel_data()
    {
        columns<QString>({"qml"});

        const auto row = [](const char *name, const QString &qml) {
            for (const int y : {3, 10, 17}) {
                QTest::addRow("%s at %d", name, y)
                    << u"Item { width: 300; height: 120; Item { y: %1; width: 300; height: 60\n%2 } }"_s.arg(QString::number(y),
                                                                                                             qml);
            }
        };
        const QString dot =
            u"Rectangle { anchors.verticalCenter: parent.verticalCenter; x: 100; width: 8; height: 8; radius: 4; color: 'red' }"_s;
        for (const int size : {10, 11, 12, 13, 15})
            row(qPrintable(u"text of %1"_s.arg(size)),
                u"PlainText { anchors.verticalCenter: parent.verticalCenter; text: 'H'; size: %1; color: 'white' }"_s.arg(size)
                    + dot);
        row("symbol",
            u"Symbol { anchors.verticalCenter: parent.verticalCenter; name: 'circle'; size: 13; color: 'white' }"_s + dot);
        row("small symbol",
            u"Symbol { anchors.verticalCenter: parent.verticalCenter; name: 'circle'; size: 11; color: 'white' }"_s + dot);
        row("count", u"StripCount { anchors.centerIn: parent; value: 0; dotColor: 'red' }"_s);
        row("digits", u"Digits { anchors.verticalCenter: parent.verticalCenter; value: '0'; color: 'white' }"_s + dot);
        row("pill", u"Pill { y: 20; text: 'H'; tone: 'red' }"_s);
        row("button", u"PillButton { y: 20; text: 'H'; tint: 'red' }"_s);
        row("field",
            u"TextInputField { y: 10; width: 60; label: ''; text: 'HHHH' }"_s
                + u"Rectangle { y: 20; x: 100; width: 8; height: 8; color: 'red' }"_s);
        row("chip",
            u"Item { y: 20; height: 20; width: 60; Rectangle { width: 60; height: chip.height; color: 'red' }\n"
            "Chip { id: chip; text: 'H'; tint: 'white'; fill: 0 } }"_s);
    }

    void capitalsAreLevel()
    {
        QFETCH(const QString, qml);
        QVERIFY(show(qml));
        const QImage image = m_view->grabWindow();
        const double text = middle(image, [](QRgb pixel) { return qMin(qGreen(pixel), qBlue(pixel)) - 20; });
        const double beside = middle(image, [](QRgb pixel) { return qRed(pixel) > 20 && qBlue(pixel) < 20 ? qRed(pixel) : 0; });
        QVERIFY(text > 0 && beside > 0);
        // Hinting and the pixel grid cost half a pixel each where logical pixels aren't whole device pixels.
        const double scale = m_view->effectiveDevicePixelRatio();
        const double most = scale == std::floor(scale) ? 0.6 : 1.02;
        QVERIFY2(std::abs(text - beside) <= most, qPrintable(u"%1 device pixels lower"_s.arg(text - beside)));
    }

    /// Nothing that is round has a notch or a nib, and no edge is wider on one side: the halves mirror each other.
    void roundShapesAreEven()
    {
        for (const char *shape :
             {"LiveDot { live: false; color: 'red' }", "LiveDot { live: false; diameter: 7; color: 'red' }",
              "Chip { width: 60; height: 20; text: ''; tint: 'red'; fill: 1 }", "Pill { width: 60; text: ''; tone: 'red' }",
              "RoundedBox { width: 60; height: 40; radius: Theme.radiusRow; color: 'red' }",
              "RoundedBox { x: 2; y: 0.3; width: 61; height: 40.6; radius: 8; edge: 1; edgeColor: 'red' }",
              "RoundedBox { y: 2; width: 61; height: 40; radius: 16; color: '#400000'; edge: 2; edgeColor: 'red' }"}) {
            QVERIFY(show(u"Item { width: 300; height: 120; Item { x: 11; y: 7; width: 300; height: 60\n%1 } }"_s.arg(
                QLatin1StringView(shape))));
            const QImage image = m_view->grabWindow();
            const auto lit = [&](int x, int y) { return qRed(image.pixel(x, y)); };
            QRect box;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    if (lit(x, y) > 0)
                        box |= QRect(x, y, 1, 1);
            QVERIFY(box.width() > 4);
            for (int y = 0; y < box.height(); ++y) {
                for (int x = 0; x < box.width(); ++x) {
                    const int here = lit(box.x() + x, box.y() + y);
                    const int across = std::max(std::abs(here - lit(box.right() - x, box.y() + y)),
                                                std::abs(here - lit(box.x() + x, box.bottom() - y)));
                    QVERIFY2(across < 32, qPrintable(u"%1 at %2, %3"_s.arg(QLatin1StringView(shape)).arg(x).arg(y)));
                }
            }
        }
    }

    /// The edge of a button is unbroken: along its straight parts each column is like the next, above and below.
    void theEdgeOfAButtonIsWhole()
    {
        QVERIFY(show(u"PillButton { x: 11; y: 7; width: 120; text: ''; tint: 'red' }"_s));
        const QImage image = m_view->grabWindow();
        const double scale = m_view->effectiveDevicePixelRatio();
        const auto column = [&](double x) {
            QList<QRgb> pixels;
            for (int y = 0; y < int(40 * scale); ++y)
                pixels.append(image.pixel(int(x * scale), y));
            return pixels;
        };
        const QList<QRgb> middle = column(70);
        QVERIFY(middle != column(5));
        for (double x = 26; x < 116; ++x)
            QCOMPARE(column(x), middle);
        const int fill = qRed(image.pixel(int(70 * scale), int(18 * scale)));
        // A slanted line covers two or three pixels of a column: those next to the strongest belong to it.
        const auto line = [&](const QList<QRgb> &pixels) {
            const auto at = std::ranges::max_element(pixels.begin() + 1, pixels.begin() + int(18 * scale), {},
                                                     [](QRgb each) { return qRed(each); });
            return qRed(at[-1]) + qRed(at[0]) + std::max(0, qRed(at[1]) - fill);
        };
        // Where an arc meets a straight part, it doesn't fade.
        for (double x = 20; x < 30; x += 1 / scale)
            QVERIFY2(line(column(x)) > 0.8 * line(middle), qPrintable(u"at %1"_s.arg(x)));
    }

    /// Nothing that fills the panel shows outside its round corners, however far it is open, in windows with transparency and
    /// without.
    void nothingStandsOutsideTheCorners()
    {
        for (const bool transparent : {false, true}) {
            QVERIFY(show(u"Item { width: 300; height: 120; property real place: 0\n"
                         "Rectangle { id: all; x: 14; width: 272; height: 60 + parent.place; color: 'white' }\n"
                         "CornerCut { x: 0; width: 300; height: all.height; topRadius: 14; bottomRadius: 26 } }"_s));
            QQuickItem *item = m_view->contentItem()->childItems().first();
            // The offscreen platform's windows are opaque, so the transparent case is painted into an image with an alpha
            // channel.
            const double scale = m_view->effectiveDevicePixelRatio();
            QImage clear(QSize(300, 120) * scale, QImage::Format_ARGB32_Premultiplied);
            clear.setDevicePixelRatio(scale);
            QQuickRenderControl control;
            QQuickWindow window(&control);
            if (transparent) {
                window.setColor(Qt::transparent);
                window.resize(300, 120);
                window.setRenderTarget(QQuickRenderTarget::fromPaintDevice(&clear));
                item->setParentItem(window.contentItem());
            }
            const auto frame = [&] {
                if (!transparent)
                    return m_view->grabWindow();
                control.polishItems();
                control.sync();
                control.render();
                return clear;
            };
            for (const double place : {0.0, 7.3, 20.0, 20.0, 11.9}) {
                item->setProperty("place", place);
                const QImage image = frame();
                const auto at = [&](double x, double y) { return image.pixel(int(x * scale), int(y * scale)); };
                const QRgb outside = transparent ? qRgba(0, 0, 0, 0) : qRgb(0, 0, 0);
                const QRgb inside = qRgb(255, 255, 255);
                const double bottom = 60 + place;
                QCOMPARE(at(16, bottom - 4), outside);
                QCOMPARE(at(283, bottom - 4), outside);
                QCOMPARE(at(150, bottom - 3), inside);
                QCOMPARE(at(16, bottom - 30), inside);
                QCOMPARE(at(283, bottom - 30), inside);
                QVERIFY(qRed(at(22, bottom - 8)) > 0); // as the outline has it
            }
            item->setParentItem(m_view->contentItem());
        }
    }

    /// The panel's contents are cut at its sides, also when the window grows a frame after the black: where nothing moves.
    void theClipStaysInTheMiddle()
    {
        QVERIFY(show(u"Item { id: window; width: 100; height: 60; CentredClip { roomWidth: 80; roomHeight: 60\n"
                     "Rectangle { width: window.width; height: 60; color: 'white' } } }"_s));
        m_view->grabWindow();
        m_view->contentItem()->childItems().first()->setWidth(200);
        const QImage image = m_view->grabWindow();
        const auto lit = [&](int x) { return image.pixelColor(int(x * m_view->effectiveDevicePixelRatio()), 9).red() > 0; };
        QCOMPARE((QList{lit(58), lit(62), lit(138), lit(142)}), (QList{false, true, true, false}));
    }

private:
    QQuickItem *show(const QString &qml) { return showQml(u"import Velto.Shell\n"_s + qml, {300, 120}); }

    /// The weighted middle, in device pixels from the top; 0 if nothing has weight.
    template <typename Weight> static double middle(const QImage &image, Weight weight)
    {
        double sum = 0;
        double moment = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const int here = qMax(0, weight(image.pixel(x, y)));
                sum += here;
                moment += here * (y + 0.5);
            }
        }
        return sum > 0 ? moment / sum : 0;
    }
};

const Registered<PixelsTest> registered;

} // namespace velto

#include "PixelsTest.moc"
