#pragma once

#include "Core/DateModel.h"
#include "Core/RowModel.h"

#include <QObject>
#include <QTime>

namespace velto {

class Clock;
class EverydaySource;
class GoogleCalendar;
class Prefs;

/// Where meetings come from: typed in here, or read from Google Calendar. UI thread only.
class CalendarForm : public QObject {
    Q_OBJECT
    /// The segments of "Source": value (what chooseSource() takes), text, selected.
    Q_PROPERTY(QAbstractItemModel *sources READ sources CONSTANT FINAL)
    Q_PROPERTY(bool google READ google NOTIFY changed FINAL)
    Q_PROPERTY(bool linked READ linked NOTIFY changed FINAL)
    Q_PROPERTY(bool connecting READ connecting NOTIFY changed FINAL)
    Q_PROPERTY(QString errorText READ errorText NOTIFY changed FINAL)
    /// calendarId, summary, chosen
    Q_PROPERTY(QAbstractItemModel *calendars READ calendars CONSTANT FINAL)
    Q_PROPERTY(bool readingCalendars READ readingCalendars NOTIFY changed FINAL)
    /// The meeting being typed in; it counts once it is saved.
    Q_PROPERTY(QString title MEMBER m_title NOTIFY edited FINAL)
    Q_PROPERTY(velto::DateModel *day READ day CONSTANT FINAL)
    /// The time of day, as it is typed.
    Q_PROPERTY(QString time READ time WRITE setTime NOTIFY edited FINAL)
    /// What was typed last isn't a time.
    Q_PROPERTY(bool timeUnreadable READ timeUnreadable NOTIFY edited FINAL)
    Q_PROPERTY(QString link MEMBER m_link NOTIFY edited FINAL)
    /// What was just done, for the user to see.
    Q_PROPERTY(QString doneText READ doneText NOTIFY edited FINAL)
public:
    /// All of it outlives this.
    struct Needs {
        EverydaySource &everyday;
        Prefs &prefs;
        const Clock &clock;
        GoogleCalendar &google;
    };
    explicit CalendarForm(const Needs &needs, QObject *parent = nullptr);

    QAbstractItemModel *sources() { return &m_sources; }
    bool google() const;
    bool linked() const;
    bool connecting() const;
    QString errorText() const;
    QAbstractItemModel *calendars() { return &m_calendars; }
    bool readingCalendars() const;
    DateModel *day() { return &m_day; }
    const QString &time() const { return m_time; }
    void setTime(const QString &text);
    bool timeUnreadable() const { return !m_start.isValid(); }
    const QString &doneText() const { return m_doneText; }

    Q_INVOKABLE void chooseSource(const QString &value);
    Q_INVOKABLE void connectGoogle();
    Q_INVOKABLE void cancelConnecting();
    Q_INVOKABLE void disconnectGoogle();
    Q_INVOKABLE void choose(const QString &calendarId, bool chosen);
    /// Stores the meeting, unless its date or time can't be read.
    Q_INVOKABLE void save();

    /// Fills the fields with what is saved.
    void reread();
    void update();

Q_SIGNALS:
    void changed();
    void edited();

private:
    /// What changed() last announced.
    struct Seen {
        bool google = false;
        bool linked = false;
        bool connecting = false;
        bool readingCalendars = false;
        QString errorText;
        bool operator==(const Seen &) const = default;
    };

    Needs m_needs;
    Seen m_seen;
    RowModel m_sources;
    RowModel m_calendars;
    DateModel m_day;
    QString m_title;
    QString m_time;
    QTime m_start;
    QString m_link;
    QString m_doneText;
};

} // namespace velto
