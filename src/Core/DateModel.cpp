#include "Core/DateModel.h"

#include "Core/Texts.h"

#include <QLocale>
#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr int kDaysOfWeek = 7;
constexpr int kWeeks = 6;
constexpr int kLastYear = 9999;
const QString kDay = u"yyyy-MM-dd"_s;

bool isWritable(QDate date)
{
    return date.isValid() && date.year() >= 1 && date.year() <= kLastYear;
}

/// The first day of the week in the user's country.
Qt::DayOfWeek weekStart()
{
    const QLocale locale;
    return (locale.territory() == QLocale::World ? QLocale::system() : locale).firstDayOfWeek();
}

/// The language's short form, with all digits of the year.
QString shortForm()
{
    QString format = QLocale().dateFormat(QLocale::ShortFormat);
    return format.contains("yyyy"_L1) ? format : format.replace("yy"_L1, "yyyy"_L1);
}

/// The numbers in a text; nothing if it holds a letter.
std::optional<QStringList> numbersIn(const QString &text)
{
    QStringList numbers;
    bool goesOn = false;
    for (const QChar c : text) {
        if (c.isLetter())
            return std::nullopt;
        if (c.digitValue() >= 0) {
            if (!goesOn)
                numbers.append(QString());
            numbers.back() += QString::number(c.digitValue());
        }
        goesOn = c.digitValue() >= 0;
    }
    return numbers;
}

/// Reads numbers in the language's order, with any separators; the year may come first, be short or be missing.
QDate fromNumbers(const QStringList &numbers, int thisYear)
{
    constexpr int kCentury = 100;
    constexpr int kThisCentury = 2000;
    constexpr int kMostDigits = 4;
    const bool tooLong = std::ranges::any_of(numbers, [](const QString &digits) { return digits.size() > kMostDigits; });
    if (tooLong || numbers.size() < 2 || numbers.size() > 3)
        return {};
    const bool yearFirst = numbers[0].size() == kMostDigits;
    const QString format = yearFirst ? kDay : shortForm();
    QList<QChar> order{u'd', u'M', u'y'};
    std::ranges::sort(order, {}, [&format](QChar field) { return format.indexOf(field); });
    if (numbers.size() == 2)
        order.removeOne(u'y');
    const auto field = [&](QChar name, int missing) {
        const auto at = order.indexOf(name);
        return at < 0 ? missing : numbers[at].toInt();
    };
    const int year = field(u'y', thisYear);
    return {year < kCentury ? year + kThisCentury : year, field(u'M', 0), field(u'd', 0)};
}

/// A date with the name of its month.
QDate fromWords(const QString &typed)
{
    const QLocale locale;
    QStringList formats{locale.dateFormat(QLocale::LongFormat), locale.dateFormat(QLocale::ShortFormat)};
    formats += {u"d MMM yyyy"_s, u"d MMMM yyyy"_s, u"MMM d, yyyy"_s, u"MMMM d, yyyy"_s, u"d. MMMM yyyy"_s};
    for (const QString &format : std::as_const(formats)) {
        if (const QDate date = locale.toDate(typed, format); date.isValid())
            return date;
    }
    return {};
}

} // namespace

DateModel::DateModel(const Clock &clock, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
    , m_days({"place", "day", "number", "inMonth", "isToday", "selected", "spoken"})
{
    setDate(today());
    m_before = m_date; // NOLINT(cppcoreguidelines-prefer-member-initializer): there is no date before this
}

QDate DateModel::today() const
{
    return velto::today(m_clock);
}

void DateModel::setDate(QDate date)
{
    if (!isWritable(date))
        return;
    m_date = date;
    m_page = QDate(date.year(), date.month(), 1);
    m_unreadable = false;
    update();
}

QString DateModel::text() const
{
    return QLocale().toString(m_date, shortForm());
}

QString DateModel::spoken() const
{
    return QLocale().toString(m_date, QLocale::LongFormat);
}

QString DateModel::month() const
{
    return QLocale().standaloneMonthName(m_page.month()) + u' ' + QLocale().toString(m_page, u"yyyy");
}

QStringList DateModel::weekdays() const
{
    const auto named = [](QLocale::FormatType form) {
        const QLocale locale;
        QStringList names;
        for (int i = 0; i < kDaysOfWeek; ++i)
            names.append(locale.standaloneDayName((int(weekStart()) - 1 + i) % kDaysOfWeek + 1, form));
        return names;
    };
    // In some languages the short form is no shorter than the long one, and the columns are narrow.
    constexpr int kLongest = 4;
    const QStringList names = named(QLocale::ShortFormat);
    const bool fit = std::ranges::all_of(names, [](const QString &name) { return name.size() <= kLongest; });
    return fit ? names : named(QLocale::NarrowFormat);
}

QDate DateModel::firstShown() const
{
    const int back = (m_page.dayOfWeek() - int(weekStart()) + kDaysOfWeek) % kDaysOfWeek;
    return m_page.addDays(-back);
}

int DateModel::place() const
{
    const bool onPage = m_date.year() == m_page.year() && m_date.month() == m_page.month();
    return int(firstShown().daysTo(onPage ? m_date : m_page));
}

QDate DateModel::read(const QString &typed) const
{
    const auto numbers = numbersIn(typed);
    return numbers ? fromNumbers(*numbers, today().year()) : fromWords(typed);
}

void DateModel::type(const QString &text)
{
    const QDate date = read(text.trimmed());
    if (isWritable(date)) {
        setDate(date);
    } else if (!std::exchange(m_unreadable, true)) {
        Q_EMIT changed();
    }
}

void DateModel::open()
{
    m_before = m_date;
    m_page = QDate(m_date.year(), m_date.month(), 1);
    update();
}

void DateModel::cancel()
{
    setDate(m_before);
}

void DateModel::pick(const QString &day)
{
    setDate(QDate::fromString(day, kDay));
}

void DateModel::pickToday()
{
    setDate(today());
}

void DateModel::moveDays(int by)
{
    setDate(m_date.addDays(by));
}

void DateModel::moveMonths(int by)
{
    setDate(m_date.addMonths(by));
}

void DateModel::moveToWeekStart()
{
    moveDays(-((m_date.dayOfWeek() - int(weekStart()) + kDaysOfWeek) % kDaysOfWeek));
}

void DateModel::moveToWeekEnd()
{
    moveToWeekStart();
    moveDays(kDaysOfWeek - 1);
}

void DateModel::turn(int months)
{
    const QDate page = m_page.addMonths(months);
    if (!isWritable(page))
        return;
    m_page = page;
    update();
}

QAbstractItemModel *DateModel::days()
{
    if (!std::exchange(m_looked, true))
        fill();
    return &m_days;
}

void DateModel::update()
{
    if (m_looked)
        fill();
    Q_EMIT changed();
}

void DateModel::fill()
{
    const QLocale locale;
    const QDate now = today();
    QList<RowModel::Row> rows;
    QDate day = firstShown();
    for (int place = 0; place < kWeeks * kDaysOfWeek; ++place, day = day.addDays(1)) {
        rows.append({QString::number(place), day.toString(kDay), locale.toString(day.day()), day.month() == m_page.month(),
                     day == now, day == m_date, locale.toString(day, QLocale::LongFormat)});
    }
    m_days.setRows(rows);
}

} // namespace velto
