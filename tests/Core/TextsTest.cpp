#include "Core/Texts.h"
#include "Core/Visible.h"
#include "RunTests.h"

#include <clocale>

using namespace Qt::StringLiterals;
using namespace velto;

/// How times, numbers and paths read, and what becomes of text that somebody else wrote, with a hostile hand even, before anybody
/// sees it.
class TextsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void agoTurnsAtTheUnit()
    {
        const QDateTime now(QDate(2026, 11, 21), QTime(9, 0));
        const auto at = [&now](qint64 milliseconds) { return ago(now.addMSecs(-milliseconds), now); };
        QCOMPARE(at(-5'000'000), u"now"_s);
        QCOMPARE(at(59'999), u"now"_s);
        QCOMPARE(at(60'000), u"1 min"_s);
        QCOMPARE(at(3'599'999), u"59 min"_s);
        QCOMPARE(at(3'600'000), u"1 h"_s);
        QCOMPARE(at(86'400'000), u"1 d"_s);
    }

    void compactRoundsAsPrintfInAnyLocale()
    {
        std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
        QCOMPARE(compact(-12'345'678), u"-12345678"_s);
        QCOMPARE(compact(999), u"999"_s);
        QCOMPARE(compact(1000), u"1k"_s);
        QCOMPARE(compact(1'500), u"2k"_s);
        QCOMPARE(compact(2'500), u"2k"_s); // to even
        QCOMPARE(compact(999'600), u"1000k"_s);
        QCOMPARE(compact(2'500'000), u"2.5M"_s);
        std::setlocale(LC_NUMERIC, "C");
    }

    void datesAreInTheOrderOfTheCountry()
    {
        const auto written = [](const char *desktop) {
            return english(QLocale(QLatin1StringView(desktop))).toString(QDate(2026, 11, 12), QLocale::ShortFormat);
        };
        QCOMPARE(written("en_US"), u"11/12/26"_s);
        QCOMPARE(written("de_DE"), u"12/11/2026"_s);
        for (const char *unknown : {"fr_FR", "ar_EG"}) // no English is written there
            QCOMPARE(written(unknown), u"12/11/2026"_s);
    }

    void aLongLastLineIsCut()
    {
        QCOMPARE(lastLine(QString(200, u'x') + u"\n \n"_s), QString(200, u'x'));
        QCOMPARE(lastLine(u"one\n"_s + QString(201, u'x')), QString(200, u'x') + u'…');
        QCOMPARE(lastLine(u"\n"_s), QString());
        QCOMPARE(withTilde(u"/home/me"_s, u"/home/me"_s) + withTilde(u"/home/me/x"_s, u"/home/me"_s), u"~~/x"_s);
        QCOMPARE(withTilde(u"/home/mex"_s, u"/home/me"_s), u"/home/mex"_s);
    }

    void lastPathComponentIgnoresTrailingSlashes()
    {
        QCOMPARE(lastPathComponent(u"/home/me/proj//"_s), u"proj"_s);
        QCOMPARE(lastPathComponent(u"proj"_s), u"proj"_s);
        QCOMPARE(lastPathComponent(u"//"_s), u"/"_s);
        QCOMPARE(lastPathComponent({}), QString());
    }

    void hidesNothingAndTurnsNothing()
    {
        const auto row = [](const char *what, const QString &text, const QString &name, const QString &command = QString()) {
            const QString line = visibleLine(text);
            const QString exact = visibleLine(text, Wording::Exact);
            QVERIFY2(line == name, qPrintable(QLatin1String(what) + u": "_s + line));
            QVERIFY2(exact == (command.isNull() ? name : command), qPrintable(QLatin1String(what) + u": "_s + exact));
            QVERIFY2(!line.isRightToLeft() && !exact.isRightToLeft(), what);
        };
        row("plain", u"git diff --stat && rm -rf ~"_s, u"git diff --stat && rm -rf ~"_s);
        row("markup", u"<b>PR</b> & <img src='x'>"_s, u"<b>PR</b> & <img src='x'>"_s);
        row("a tail behind zero width", u"ls"_s + QString(59, u'\u200B') + u"\nrm -rf ~"_s, u"ls‹U+200B×59› ⏎ rm -rf ~"_s);
        row("a tail behind blanks", u"ls"_s + QString(59, u' ') + u"; rm x"_s, u"ls‹␣×59›; rm x"_s);
        row("blanks and tabs in turn", u"ls \t \t rm"_s, u"ls‹␣×5›rm"_s);
        row("three blanks", u"a   b\tc"_s, u"a   b c"_s);
        row("line breaks", u"one\r\ntwo\n\n\nthree\rfour"_s, u"one ⏎ two ⏎×3 three ⏎ four"_s,
            u"one‹U+000D› ⏎ two ⏎×3 three‹U+000D›four"_s);
        row("separators", u"a\u2028b\u2029c\u0085d"_s, u"a‹U+2028›b‹U+2029›c‹U+0085›d"_s);
        row("controls", u"a\u0007b\u001B[31md\u007F"_s + QChar(0), u"a‹U+0007›b‹U+001B›[31md‹U+007F›‹U+0000›"_s);
        row("turned around", u"\u202Etxt.exe\u202C \u2066x\u2069\u200F\u061C"_s,
            u"‹U+202E›txt.exe‹U+202C› ‹U+2066›x‹U+2069›‹U+200F›‹U+061C›"_s);
        row("format characters", u"a\u00ADb\u2060c\uFEFFd\uFFF9e"_s, u"a‹U+00AD›b‹U+2060›c‹U+FEFF›d‹U+FFF9›e"_s);
        row("other blanks", u"a\u2003b\u2009c\u1680d"_s, u"a‹U+2003›b‹U+2009›c‹U+1680›d"_s);
        row("wide blanks", u"a\u00A0b\u3000c"_s, u"a\u00A0b\u3000c"_s, u"a‹U+00A0›b‹U+3000›c"_s);
        row("fillers", u"a\u3164b\u115Fc\uFFA0d\u2800e\u034Ff\u17B4g\U00013441"_s,
            u"a‹U+3164›b‹U+115F›c‹U+FFA0›d‹U+2800›e‹U+034F›f‹U+17B4›g‹U+13441›"_s);
        row("variation selectors", u"a\uFE00b\U000E0100c\u180Bd"_s, u"a‹U+FE00›b‹U+E0100›c‹U+180B›d"_s);
        row("tags", u"x\U000E0041\U000E0041\U000E0042"_s, u"x‹U+E0041×2›‹U+E0042›"_s);
        row("private, unassigned, no character", u"\uE000\u0378\uFFFF\U0010FFFF"_s, u"‹U+E000›‹U+0378›‹U+FFFF›‹U+10FFFF›"_s);
        row("half a character", QString(QChar(0xD83D)) + u'x' + QChar(0xDE00), u"‹U+D83D›x‹U+DE00›"_s);
        row("a pile of marks", u'e' + QString(12, u'\u0301') + u'x', u'e' + QString(3, u'\u0301') + u"‹◌×9›x"_s);
        row("marks on nothing", u"\u0301a \u0302"_s, u"‹◌›a ‹◌›"_s);
        row("struck out", u"r\u0336m\u0336"_s, u"r\u0336m\u0336"_s, u"r‹◌›m‹◌›"_s);
        row("emoji", u"👩\u200D💻 ❤\uFE0F 1\uFE0F\u20E3"_s, u"👩\u200D💻 ❤\uFE0F 1\uFE0F\u20E3"_s,
            u"👩‹U+200D›💻 ❤‹U+FE0F› 1‹U+FE0F›‹◌›"_s);
        row("a row of styles", u"✔\uFE0E❤"_s + QString(9, u'\uFE0F') + u"x"_s, u"✔\uFE0E❤\uFE0F‹U+FE0F×8›x"_s,
            u"✔‹U+FE0E›❤‹U+FE0F×9›x"_s);
        row("joiners that join nothing", u"a\u200Db\u200C❤\u200D"_s, u"a‹U+200D›b‹U+200C›❤‹U+200D›"_s);
        // Right-to-left text stays in its place, and in a command each word does.
        row("Hebrew", u"rm -rf אב גד/x 12"_s, u"\u2066rm -rf אב גד/x 12\u2069"_s, u"rm -rf \u200Eאב\u200E \u200Eגד\u200E/x 12"_s);
        row("Persian", u"می\u200Cخواهم"_s, u"\u2066می\u200Cخواهم\u2069"_s, u"\u200Eمی\u200E‹U+200C›\u200Eخواهم\u200E"_s);
    }

    void keepsLinesAndTheirIndents()
    {
        const auto lines = [](const QString &text) { return visibleLines(text, Wording::Exact); };
        QCOMPARE(lines(u"if x\n\ty\n        z\nfi"_s), u"if x\n\ty\n        z\nfi"_s);
        QCOMPARE(lines(u"a"_s + QString(500, u'\n') + u"b"_s), u"a\n‹⏎×499›\nb"_s);
        QCOMPARE(lines(QString(60, u' ') + u"x y    z"_s), u"‹␣×60›x y‹␣×4›z"_s);
        QCOMPARE(lines(u"rm x\rls"_s), u"rm x‹U+000D›ls"_s);
        QCOMPARE(visibleLines(u"one\r\ntwo\n\u0007three"_s), u"one\ntwo\n‹U+0007›three"_s);
        QCOMPARE(visibleLines(u"אב\nגד"_s), u"\u2066אב\u2069\n\u2066גד\u2069"_s);
    }

    void saysThatItIsCut()
    {
        QCOMPARE(visibleLine(QString(10'000, u'x')), QString(999, u'x') + u'…');
        QCOMPARE(visibleLine(u"abcde"_s, Wording::Exact, 5), u"abcde"_s);
        QCOMPARE(visibleLine(u"a אבגדה"_s, Wording::Exact, 6), u"a \u200Eאב\u200E…"_s); // nor without the mark behind a word
        QCOMPARE(visibleLine(u"abcd👩"_s, Wording::Exact, 5), u"abcd…"_s); // not in the middle of a character
        QCOMPARE(visibleLine(u"abc👩d"_s, Wording::Exact, 5), u"abc…"_s);
    }
};

static const Registered<TextsTest> registered;
#include "TextsTest.moc"
