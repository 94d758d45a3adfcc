#pragma once

#include "Core/RowModel.h"

#include <QDate>
#include <QObject>
#include <QStringList>

namespace velto {

class Clock;

/// A date with the small calendar that it is picked from, in the user's language. UI thread only.
class DateField : public QObject {
    Q_OBJECT
    /// The date, for reading.
    Q_PROPERTY(QString text READ text NOTIFY changed FINAL)
    /// The same, as a screen reader says it.
    Q_PROPERTY(QString spoken READ spoken NOTIFY changed FINAL)
    /// The month that the calendar shows: "November 2026".
    Q_PROPERTY(QString month READ month NOTIFY changed FINAL)
    /// The short names of the seven days, from the first of the user's week.
    Q_PROPERTY(QStringList weekdays READ weekdays CONSTANT FINAL)
    /// Six weeks, 42 rows: day ("yyyy-MM-dd"), number (text), inMonth, isToday, selected, spoken.
    Q_PROPERTY(QAbstractItemModel *days READ days CONSTANT FINAL)
    /// The place of the date among the days; -1 if another month is on show.
    Q_PROPERTY(int selectedPlace READ selectedPlace NOTIFY changed FINAL)
public:
    explicit DateField(const Clock &clock, QObject *parent = nullptr);

    QDate date() const { return m_date; }
    void setDate(QDate date);

    QString text() const;
    QString spoken() const;
    QString month() const;
    QStringList weekdays() const;
    QAbstractItemModel *days() { return &m_days; }
    int selectedPlace() const;

    /// Picks a day, by its text.
    Q_INVOKABLE void pick(const QString &day);
    /// Moves the date, and the calendar with it: the arrow keys go by 1 and 7 days, Page Up and Down by a month.
    Q_INVOKABLE void moveDays(int by);
    Q_INVOKABLE void moveMonths(int by);
    Q_INVOKABLE void pickToday();
    /// Turns the pages of the calendar; the date stays.
    Q_INVOKABLE void turn(int months);
    /// Takes a date that the user typed, in the form of `text` or as "yyyy-MM-dd"; false if it is none.
    Q_INVOKABLE bool take(const QString &typed);

Q_SIGNALS:
    void changed();

private:
    QDate firstShown() const;
    void update();

    const Clock &m_clock;
    QDate m_date;
    QDate m_page; ///< the first day of the month on show
    RowModel m_days;
};

} // namespace velto
