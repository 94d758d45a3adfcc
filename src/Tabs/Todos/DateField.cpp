#include "Tabs/Todos/DateField.h"

#include "Platform/Clock.h"
#include "Tabs/Todos/Todo.h"
#include "Tabs/Todos/TodoDates.h"

#include <QLocale>

namespace velto {

namespace {

constexpr int kDaysOfWeek = 7;
constexpr int kWeeks = 6;
constexpr int kLastYear = 9999;

bool isWritable(QDate date)
{
    return date.isValid() && date.year() >= 1 && date.year() <= kLastYear;
}

/// A date as the language writes it in short. It may write two digits of the year: those of this century.
QDate fromShort(const QString &typed)
{
    constexpr int kCentury = 100;
    constexpr int kThisCentury = 2000;
    const QDate date = QLocale().toDate(typed, QLocale::ShortFormat);
    const bool twoDigits = date.isValid() && date.year() < kThisCentury && !typed.contains(QLocale().toString(date, u"yyyy"));
    return twoDigits ? date.addYears(kCentury) : date;
}

} // namespace

DateField::DateField(const Clock &clock, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
    , m_days({"place", "day", "number", "inMonth", "isToday", "selected", "spoken"})
{
    setDate(m_clock.wallTime().toLocalTime().date());
}

void DateField::setDate(QDate date)
{
    if (!isWritable(date))
        return;
    m_date = date;
    m_page = QDate(date.year(), date.month(), 1);
    update();
}

QString DateField::text() const
{
    return fullDate(m_date);
}

QString DateField::spoken() const
{
    return QLocale().toString(m_date, QLocale::LongFormat);
}

QString DateField::month() const
{
    return QLocale().standaloneMonthName(m_page.month()) + u' ' + QLocale().toString(m_page, u"yyyy");
}

QStringList DateField::weekdays() const
{
    const QLocale locale;
    QStringList names;
    for (int i = 0; i < kDaysOfWeek; ++i)
        names.append(locale.standaloneDayName((int(locale.firstDayOfWeek()) - 1 + i) % kDaysOfWeek + 1, QLocale::ShortFormat));
    return names;
}

QDate DateField::firstShown() const
{
    const int back = (m_page.dayOfWeek() - int(QLocale().firstDayOfWeek()) + kDaysOfWeek) % kDaysOfWeek;
    return m_page.addDays(-back);
}

int DateField::selectedPlace() const
{
    const bool onPage = m_date.year() == m_page.year() && m_date.month() == m_page.month();
    return onPage ? int(firstShown().daysTo(m_date)) : -1;
}

void DateField::pick(const QString &day)
{
    setDate(dayOf(day));
}

void DateField::moveDays(int by)
{
    setDate(m_date.addDays(by));
}

void DateField::moveMonths(int by)
{
    setDate(m_date.addMonths(by));
}

void DateField::pickToday()
{
    setDate(m_clock.wallTime().toLocalTime().date());
}

void DateField::turn(int months)
{
    const QDate page = m_page.addMonths(months);
    if (!isWritable(page))
        return;
    m_page = page;
    update();
}

bool DateField::take(const QString &typed)
{
    const QString text = typed.trimmed();
    for (const QDate date : {dayOf(text), fromShort(text), QLocale().toDate(text, QLocale::LongFormat)}) {
        if (isWritable(date)) {
            setDate(date);
            return true;
        }
    }
    return text == this->text();
}

void DateField::update()
{
    const QLocale locale;
    const QDate today = m_clock.wallTime().toLocalTime().date();
    QList<RowModel::Row> rows;
    QDate day = firstShown();
    for (int place = 0; place < kWeeks * kDaysOfWeek; ++place, day = day.addDays(1)) {
        rows.append({QString::number(place), textOf(day), locale.toString(day.day()), day.month() == m_page.month(), day == today,
                     day == m_date, locale.toString(day, QLocale::LongFormat)});
    }
    m_days.setRows(rows);
    Q_EMIT changed();
}

} // namespace velto
