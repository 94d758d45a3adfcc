#include "RunTests.h"

#include "Design/Symbols.h"
#include "Design/Theme.h"

#include <QPainterPath>
#include <QRawFont>

using namespace Qt::StringLiterals;

namespace velto {

/// The numbers that views stand on, and whether what the table of symbols names can be drawn.
class ThemeTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void springFollowsTheCurve()
    {
        // 1 - (1 + wt) e^(-wt) with w = 2 pi / 0.38 s, over what it reaches after 0.55 s.
        for (const auto &[seconds, travel] : {std::pair(0.0, 0.0), std::pair(0.095, 0.46611), std::pair(0.19, 0.82197),
                                              std::pair(0.38, 0.98752), std::pair(0.55, 1.0)}) {
            const double reached = Theme::spring().valueForProgress(seconds * 1000 / Theme::kSpringDuration);
            QVERIFY2(qAbs(reached - travel) < 0.0005, qPrintable(u"%1 at %2 s"_s.arg(reached).arg(seconds)));
        }
    }

    /// Each text of the panel on the lightest background that it can scroll to.
    void everyTextCanBeRead()
    {
        const QColor card = Theme::lightestGround();
        const auto on = [&](const QColor &tint, double fill) { return Theme::lightestGround(tint, fill); };
        for (const auto &[what, text, ground] : std::initializer_list<std::tuple<const char *, QColor, QColor>>{
                 {"primary", Theme::kGlassPrimary, card},
                 {"secondary", Theme::kGlassSecondary, card},
                 {"tertiary", Theme::kGlassTertiary, card},
                 {"secondary on a tile", Theme::kGlassSecondary, on(Theme::kIce, 0.04)},
                 {"prompt in a field", Theme::kGlassTertiary, on(Qt::black, 0.2)},
                 {"a wrong thing", Theme::ink(Theme::kCoral), card},
                 {"overdue", Theme::ink(Theme::kRed), card},
                 {"a tile's wish", Theme::ink(Theme::kOrange), card},
                 {"a session that works", Theme::kMint, card},
                 {"a session that waits", Theme::kAmber, card},
                 {"chip, overdue", Theme::ink(Theme::kRed, 0.16), on(Theme::kRed, 0.16)},
                 {"chip, a person", Theme::ink(Theme::kCyan, 0.16), on(Theme::kCyan, 0.16)},
                 {"chip, quiet", Theme::ink(Theme::kGlassSecondary, 0.16), on(Theme::kGlassSecondary, 0.16)},
                 {"chip, under the pointer", Theme::ink(Theme::kIce, 0.24), on(Theme::kIce, 0.24)},
                 {"button", Theme::kGlassPrimary, on(Theme::kIce, 0.16)},
                 {"button, under the pointer", Qt::white, on(Theme::kIce, 0.2)},
                 {"white button, under the pointer", Qt::white, on(Qt::white, 0.2)},
             }) {
            const double ratio = Theme::contrast(text, ground);
            QVERIFY2(ratio >= 4.5, qPrintable(u"%1: %2"_s.arg(QLatin1StringView(what)).arg(ratio)));
        }
        QCOMPARE(Theme::ink(Theme::kAmber), Theme::kAmber); // what is readable stays as it is
    }

    void nothingMovesWhenMotionIsReduced()
    {
        Theme theme;
        QVERIFY(theme.fadeDuration() > 0);
        theme.setReducedMotion(true);
        QCOMPARE(theme.springDuration(), 0);
        QCOMPARE(theme.fadeDuration(), 0);
        QCOMPARE(theme.flashInDuration(), 0);
        QCOMPARE(theme.flashOutDuration(), 0);
    }

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
};

const Registered<ThemeTest> registered;

} // namespace velto

#include "ThemeTest.moc"
