#pragma once

#include "Core/RowModel.h"

#include <QDateTime>
#include <QObject>

namespace velto {

class GoogleCalendar;
class Hub;
class Prefs;

/// Where meetings come from: typed in here, or read from Google Calendar. UI thread only.
class CalendarForm : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool google READ google WRITE setGoogle NOTIFY changed FINAL)
    Q_PROPERTY(bool linked READ linked NOTIFY changed FINAL)
    Q_PROPERTY(bool connecting READ connecting NOTIFY changed FINAL)
    Q_PROPERTY(QString errorText READ errorText NOTIFY changed FINAL)
    /// calendarId, summary, chosen
    Q_PROPERTY(QAbstractItemModel *calendars READ calendars CONSTANT FINAL)
    Q_PROPERTY(bool readingCalendars READ readingCalendars NOTIFY changed FINAL)
    /// The meeting being typed in; it counts once it is saved.
    Q_PROPERTY(QString title MEMBER m_title NOTIFY edited FINAL)
    Q_PROPERTY(QDateTime start MEMBER m_start NOTIFY edited FINAL)
    Q_PROPERTY(QString link MEMBER m_link NOTIFY edited FINAL)
    /// What was just done, for the user to see.
    Q_PROPERTY(QString doneText READ doneText NOTIFY edited FINAL)
public:
    /// All of it outlives this.
    struct Needs {
        Hub &hub;
        Prefs &prefs;
        GoogleCalendar &google;
    };
    explicit CalendarForm(const Needs &needs, QObject *parent = nullptr);

    bool google() const;
    void setGoogle(bool google);
    bool linked() const;
    bool connecting() const;
    QString errorText() const;
    QAbstractItemModel *calendars() { return &m_calendars; }
    bool readingCalendars() const;
    const QString &doneText() const { return m_doneText; }

    Q_INVOKABLE void connectGoogle();
    Q_INVOKABLE void disconnectGoogle();
    Q_INVOKABLE void choose(const QString &calendarId, bool chosen);
    Q_INVOKABLE void save();

    /// Fills the fields with what is saved.
    void reread();
    void update();

Q_SIGNALS:
    void changed();
    void edited();

private:
    Needs m_needs;
    RowModel m_calendars;
    QString m_title;
    QDateTime m_start;
    QString m_link;
    QString m_doneText;
};

} // namespace velto
