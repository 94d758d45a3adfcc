#include "RunTests.h"

#include "Design/Symbols.h"

#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QPainterPath>
#include <QRawFont>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// The program's sources with the given ending, by path.
QMap<QString, QString> sources(const QStringList &endings)
{
    QMap<QString, QString> texts;
    QDirIterator files(QStringLiteral(VELTO_SOURCES), endings, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            texts[file.fileName()] = QString::fromUtf8(file.readAll());
    }
    return texts;
}

/// Every text literal that stands where a symbol is named: on a line that speaks of a symbol, as the name of a Symbol, second
/// after a title in a table of titles and symbols, or anywhere if it begins like a symbol that has several parts.
QStringList symbolsNamedIn(const QString &source)
{
    static const QRegularExpression literal(
        u"\"([a-z][a-z0-9]*(?:\\.[a-z0-9]+)*)\"(?!_ba)"_s); // a byte array is the name of a role
    static const QRegularExpression speaks(u"symbol\\b|Symbol\\b|^\\s*name:"_s);
    static const QRegularExpression titled(u"\\{\\s*u?\"[A-Z][^\"]*\"(?:_s|_L1)?,\\s*u?\"([a-z][a-z0-9.]*)\""_s);
    QSet<QString> families;
    for (const SymbolEntry &symbol : symbolTable())
        if (symbol.name.contains(u'.'))
            families += QString(symbol.name).section(u'.', 0, 0);

    QStringList found;
    for (const QString &line : source.split(u'\n')) {
        const bool near = speaks.match(line).hasMatch() && !line.contains(u"//"_s) && !line.contains(u"#include"_s);
        for (const QRegularExpressionMatch &match : literal.globalMatch(line)) {
            const QString text = match.captured(1);
            if (near || (text.contains(u'.') && families.contains(text.section(u'.', 0, 0))))
                found += text;
        }
        for (const QRegularExpressionMatch &match : titled.globalMatch(line))
            found += match.captured(1);
    }
    return found;
}

} // namespace

/// Every symbol that the program names can be drawn.
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

    void everyNameInTheSourcesIsKnown()
    {
        QSet<QString> seen;
        const auto texts = sources({u"*.cpp"_s, u"*.h"_s, u"*.qml"_s});
        for (auto file = texts.begin(); file != texts.end(); ++file) {
            if (file.key().contains(u"/Platform/"_s))
                continue; // names of desktops and programs, not of symbols
            for (const QString &name : symbolsNamedIn(file.value())) {
                QVERIFY2(!symbolGlyph(name).isEmpty(), qPrintable(name + u" in "_s + file.key()));
                seen += name;
            }
        }
        QVERIFY2(seen.contains(u"exclamationmark.triangle"_s), "the search itself finds nothing");
    }

    void noTextIsRichByAccident()
    {
        static const QRegularExpression item(u"^ *(Text|Label|TextEdit|TextArea) \\{"_s, QRegularExpression::MultilineOption);
        static const QRegularExpression plain(u"textFormat: \\w+\\.PlainText"_s);
        const auto texts = sources({u"*.qml"_s});
        QVERIFY(!texts.isEmpty());
        for (auto file = texts.begin(); file != texts.end(); ++file) {
            QVERIFY2(file.value().count(item) <= file.value().count(plain), qPrintable(file.key()));
            QVERIFY2(!file.value().contains(u"RichText"_s) && !file.value().contains(u"StyledText"_s), qPrintable(file.key()));
        }
    }
};

const Registered<SymbolsTest> registered;

} // namespace velto

#include "SymbolsTest.moc"
