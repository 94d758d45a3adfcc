#include "Core/DateModel.h"
#include "Platform/Fake/FakeClock.h"
#include "RunTests.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace velto {

/// A date as it is typed, and as it is picked from a small calendar.
class DateModelTest : public QObject {
    Q_OBJECT

    FakeClock m_clock; // Saturday, 21 November 2026
    enum Role : int { Day = Qt::UserRole + 1, Number, InMonth, IsToday, Selected, Spoken };

    static QString day(const DateModel &model) { return model.date().toString(u"yyyy-MM-dd"); }

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::system()); }

    void theCalendarShowsSixWeeks()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        DateModel model(m_clock);
        const auto cell = [&](int place, Role role) { return model.days()->index(place, 0).data(role); };
        QCOMPARE(model.text(), u"11/21/2026"_s);
        QCOMPARE(model.spoken(), u"Saturday, November 21, 2026"_s);
        QCOMPARE(model.month(), u"November 2026"_s);
        QCOMPARE(model.weekdays().join(u' '), u"Sun Mon Tue Wed Thu Fri Sat"_s);
        QCOMPARE(model.days()->rowCount(), 42);
        QCOMPARE(cell(0, Day), u"2026-11-01"_s);
        QCOMPARE(cell(20, Spoken), model.spoken());
        QCOMPARE(model.place(), 20);
        QVERIFY(cell(20, IsToday).toBool() && cell(20, Selected).toBool() && cell(20, InMonth).toBool());
        QVERIFY(!cell(41, InMonth).toBool());
        model.turn(3);
        QCOMPARE(model.month(), u"February 2027"_s);
        QCOMPARE(cell(model.place(), Day), u"2027-02-01"_s); // the shown month isn't the date's
        QCOMPARE(day(model), u"2026-11-21"_s);
        model.open();
        model.pick(u"2027-01-31"_s);
        model.moveMonths(1);
        QCOMPARE(day(model), u"2027-02-28"_s);
        model.pick(u"nonsense"_s);
        QCOMPARE(day(model), u"2027-02-28"_s);
        model.cancel();
        QCOMPARE(day(model), u"2026-11-21"_s);
        model.pick(u"9999-06-01"_s);
        model.moveMonths(12);
        QCOMPARE(day(model), u"9999-06-01"_s);

        QLocale::setDefault(QLocale(QLocale::German));
        DateModel german(m_clock);
        QCOMPARE(german.weekdays().first(), u"Mo"_s);
        QCOMPARE(german.text(), u"21.11.2026"_s);
        QCOMPARE(german.days()->index(0, 0).data(Day), u"2026-10-26"_s);
        QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
        QCOMPARE(DateModel(m_clock).weekdays().first(), u"س"_s);
    }

    void itReadsWhatPeopleType()
    {
        const auto row = [this](const char *locale, const QString &typed, const QString &date) {
            QLocale::setDefault(QLocale(QLatin1String(locale)));
            DateModel model(m_clock);
            const QString expected = date.isEmpty() ? u"2026-11-21"_s : date;
            model.type(typed);
            QVERIFY2(model.unreadable() == date.isEmpty(), qPrintable(typed));
            QCOMPARE(day(model), expected);
            for (const QString &own : {model.text(), model.spoken()}) { // it parses what it writes itself
                model.type(own);
                QVERIFY2(!model.unreadable(), qPrintable(typed));
                QCOMPARE(day(model), expected);
            }
        };
        row("en_US", u"3/4/2027"_s, u"2027-03-04"_s);
        row("en_US", u" 3-4-27 "_s, u"2027-03-04"_s);
        row("en_US", u"12/24"_s, u"2026-12-24"_s);
        row("en_US", u"2028-02-29"_s, u"2028-02-29"_s);
        row("en_US", u"2027-02-29"_s, QString());
        row("en_US", u"Tuesday, March 2, 2027"_s, u"2027-03-02"_s);
        row("en_US", u"march 2, 2027"_s, u"2027-03-02"_s);
        row("en_US", u"13/1/2027"_s, QString());
        row("en_US", u"tomorrow"_s, QString());
        row("en_US", QString(), QString());
        row("en_US", u"1/2/3/4"_s, QString());
        row("en_US", u"1/2/99999999999"_s, QString());
        row("en_GB", u"3/4/27"_s, u"2027-04-03"_s);
        row("de_DE", u"3.4.27"_s, u"2027-04-03"_s);
        row("de_DE", u"24.12."_s, u"2026-12-24"_s);
        row("de_DE", u"3. April 2027"_s, u"2027-04-03"_s);
        row("hu_HU", u"2027. 04. 03."_s, u"2027-04-03"_s);
        row("ar_EG", u"٣/٤/٢٠٢٧"_s, u"2027-04-03"_s);
    }
};

const Registered<DateModelTest> registered;

} // namespace velto

#include "DateModelTest.moc"
