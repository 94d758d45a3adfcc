#pragma once

#include "Core/RowModel.h"

#include <QDate>
#include <QObject>
#include <QStringList>

namespace velto {

class Clock;

/// A date that is typed or picked from a small calendar, in the user's language. UI thread only.
class DateModel : public QObject {
    Q_OBJECT
    /// The date as it is typed: "11/21/2026".
    Q_PROPERTY(QString text READ text NOTIFY changed FINAL)
    /// The same, as a screen reader says it.
    Q_PROPERTY(QString spoken READ spoken NOTIFY changed FINAL)
    /// What was typed last isn't a date; the date is the one before it.
    Q_PROPERTY(bool unreadable READ unreadable NOTIFY changed FINAL)
    /// The month that the calendar shows: "November 2026".
    Q_PROPERTY(QString month READ month NOTIFY changed FINAL)
    /// The short names of the seven days, from the first of the user's week.
    Q_PROPERTY(QStringList weekdays READ weekdays CONSTANT FINAL)
    /// Six weeks, 42 rows: place, day ("yyyy-MM-dd"), number (text), inMonth, isToday, selected, spoken.
    Q_PROPERTY(QAbstractItemModel *days READ days CONSTANT FINAL)
    /// The place of the date among the days; if another month is on show, that of its first day.
    Q_PROPERTY(int place READ place NOTIFY changed FINAL)
public:
    explicit DateModel(const Clock &clock, QObject *parent = nullptr);

    QDate date() const { return m_date; }
    void setDate(QDate date);

    QString text() const;
    QString spoken() const;
    bool unreadable() const { return m_unreadable; }
    QString month() const;
    QStringList weekdays() const;
    QAbstractItemModel *days();
    int place() const;

    /// Takes what the user has typed so far, as the language writes dates, in short or in full, or as "yyyy-MM-dd".
    Q_INVOKABLE void type(const QString &text);
    /// The calendar is about to be shown, at the date's month.
    Q_INVOKABLE void open();
    /// Back to the date of open().
    Q_INVOKABLE void cancel();
    /// Picks a day, by its text.
    Q_INVOKABLE void pick(const QString &day);
    Q_INVOKABLE void pickToday();
    /// Move the date, and the calendar with it.
    Q_INVOKABLE void moveDays(int by);
    Q_INVOKABLE void moveMonths(int by);
    Q_INVOKABLE void moveToWeekStart();
    Q_INVOKABLE void moveToWeekEnd();
    /// Turns the pages of the calendar; the date stays.
    Q_INVOKABLE void turn(int months);

Q_SIGNALS:
    void changed();

private:
    QDate today() const;
    QDate read(const QString &typed) const;
    QDate firstShown() const;
    void update();
    void fill();

    const Clock &m_clock;
    QDate m_date;
    QDate m_before; ///< the date when the calendar came on show
    QDate m_page; ///< the first day of the month on show
    bool m_unreadable = false;
    RowModel m_days;
    bool m_looked = false; ///< somebody has asked for the days; they aren't made before
};

} // namespace velto
