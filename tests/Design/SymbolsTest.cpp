#include "RunTests.h"

#include "Design/Symbols.h"

#include <QPainterPath>
#include <QRawFont>

using namespace Qt::StringLiterals;

namespace velto {

/// Every symbol in the table can be drawn.
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
            // Not empty, not too small to be recognised, and within its square.
            QVERIFY2(qMax(box.width(), box.height()) > 64 * 0.4, name);
            QVERIFY2(box.left() > -1 && box.right() < 65 && box.top() > -65 && box.bottom() < 1, name);
            // Centred, as far as arrows and notes are.
            QVERIFY2(qAbs(box.center().x() - 32) < 6 && qAbs(box.center().y() + 32) < 7, name);
        }
    }
};

const Registered<SymbolsTest> registered;

} // namespace velto

#include "SymbolsTest.moc"
