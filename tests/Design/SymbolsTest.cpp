#include "RunTests.h"

#include "Design/Symbols.h"

#include <QImage>
#include <QPainterPath>
#include <QRawFont>

using namespace Qt::StringLiterals;

namespace velto {

/// What the table of symbols names can be drawn.
class SymbolsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void everyEntryIsDrawn()
    {
        QCOMPARE(symbolFamily(), u"Velto Symbols"_s);
        const QRawFont font(u":/velto/symbols.ttf"_s, 64);
        QVERIFY(font.isValid());
        for (const SymbolEntry &symbol : symbolTable()) {
            const QVector<quint32> glyphs = font.glyphIndexesForString(symbolGlyph(symbol.name.toString()));
            QCOMPARE(glyphs.size(), 1);
            const char *name = symbol.name.data();
            QVERIFY2(glyphs.first() != 0, name);
            const QRectF box = font.pathForGlyph(glyphs.first()).boundingRect();
            // Neither empty, nor so small that it can't be made out, nor out of its square.
            QVERIFY2(qMax(box.width(), box.height()) > 64 * 0.4, name);
            QVERIFY2(box.left() > -1 && box.right() < 65 && box.top() > -65 && box.bottom() < 1, name);
            // In the middle, as far as an arrow or a note lets it.
            QVERIFY2(qAbs(box.center().x() - 32) < 6 && qAbs(box.center().y() + 32) < 7, name);
        }
    }

    void picturesAreSharpAtEveryScale()
    {
        QVERIFY(symbolImage(u"zzz", 22, Qt::white).isNull());
        for (const qreal ratio : {1.0, 1.5, 2.0}) {
            const QImage image = symbolImage(u"circle", 22, Qt::red, ratio);
            QCOMPARE(image.size(), QSize(int(22 * ratio), int(22 * ratio)));
            QCOMPARE(image.devicePixelRatio(), ratio);
            // A ring: nothing in the middle, its colour on the way out, as far above as below.
            const int middle = image.width() / 2;
            int top = 0;
            int bottom = image.height() - 1;
            while (top < middle && qAlpha(image.pixel(middle, top)) < 128)
                ++top;
            while (bottom > middle && qAlpha(image.pixel(middle, bottom)) < 128)
                --bottom;
            QCOMPARE(qAlpha(image.pixel(middle, middle)), 0);
            QVERIFY(top > 0 && top < middle / 2);
            QVERIFY(qAbs(top - (image.height() - 1 - bottom)) <= 1);
            QCOMPARE(image.pixelColor(middle, top).red(), 255);
        }
    }
};

const Registered<SymbolsTest> registered;

} // namespace velto

#include "SymbolsTest.moc"
