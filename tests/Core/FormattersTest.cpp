#include "Core/Texts.h"
#include "Platform/Fake/FakeClock.h"
#include "RunTests.h"

#include <clocale>

using namespace Qt::StringLiterals;
using namespace velto;

class FormattersTest : public QObject {
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

    void compactRoundsAsPrintfInAnyLocale()
    {
        std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
        QCOMPARE(compact(-12'345'678), u"-12345678"_s);
        QCOMPARE(compact(999), u"999"_s);
        QCOMPARE(compact(1000), u"1k"_s);
        QCOMPARE(compact(1'500), u"2k"_s);
        QCOMPARE(compact(2'500), u"2k"_s); // rounds half to even
        QCOMPARE(compact(999'600), u"1000k"_s);
        QCOMPARE(compact(2'500'000), u"2.5M"_s);
        std::setlocale(LC_NUMERIC, "C");
    }

    void todayCountsDaysNotHours()
    {
        // Half an hour before midnight on the day before clocks may change.
        const FakeClock clock(QDateTime(QDate(2026, 10, 24), QTime(23, 30)));
        QCOMPARE(today(clock, 0), u"2026-10-24"_s);
        QCOMPARE(today(clock, 1), u"2026-10-25"_s);
        QCOMPARE(today(clock, 2), u"2026-10-26"_s);
        QCOMPARE(today(clock, -24), u"2026-09-30"_s);
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
};

static const Registered<FormattersTest> registered;
#include "FormattersTest.moc"
