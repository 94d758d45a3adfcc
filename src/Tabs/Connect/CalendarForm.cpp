#include "Tabs/Connect/CalendarForm.h"

#include "Core/Hub.h"
#include "Core/Prefs.h"
#include "Tabs/Home/EverydaySource.h"
#include "Tabs/Home/GoogleCalendar.h"

using namespace Qt::StringLiterals;

namespace velto {

CalendarForm::CalendarForm(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
    , m_calendars({"calendarId"_ba, "summary"_ba, "chosen"_ba})
{
    connect(&m_needs.google, &GoogleCalendar::changed, this, &CalendarForm::update);
    reread();
}

bool CalendarForm::google() const
{
    return m_needs.prefs.calendarSource() == Prefs::CalendarSource::Google;
}

void CalendarForm::setGoogle(bool google)
{
    if (google == this->google())
        return;
    m_needs.prefs.setCalendarSource(google ? Prefs::CalendarSource::Google : Prefs::CalendarSource::Manual);
    m_needs.hub.everyday()->refresh();
}

bool CalendarForm::linked() const
{
    return m_needs.google.linked();
}

bool CalendarForm::connecting() const
{
    return m_needs.google.connecting();
}

QString CalendarForm::errorText() const
{
    return m_needs.google.error().value_or(QString());
}

bool CalendarForm::readingCalendars() const
{
    return linked() && m_calendars.rows().isEmpty();
}

void CalendarForm::connectGoogle()
{
    if (!connecting())
        m_needs.google.connect();
}

void CalendarForm::disconnectGoogle()
{
    m_needs.google.disconnect();
}

void CalendarForm::choose(const QString &calendarId, bool chosen)
{
    QStringList ids = m_needs.prefs.googleCalendarIDs();
    ids.removeAll(calendarId);
    if (chosen)
        ids.append(calendarId);
    m_needs.prefs.setGoogleCalendarIDs(ids);
    m_needs.google.refresh();
}

void CalendarForm::save()
{
    m_needs.prefs.setMeetingTitle(m_title);
    m_needs.prefs.setMeetingStart(m_start);
    m_needs.prefs.setMeetingURL(m_link);
    m_needs.prefs.set(Prefs::Module::Calendar, true);
    m_needs.hub.everyday()->loadCalendar();
    m_doneText = tr("Saved.");
    Q_EMIT edited();
}

void CalendarForm::reread()
{
    m_title = m_needs.prefs.meetingTitle();
    m_start = m_needs.prefs.meetingStart().toLocalTime();
    m_link = m_needs.prefs.meetingURL();
    m_doneText.clear();
    Q_EMIT edited();
    update();
}

void CalendarForm::update()
{
    QList<RowModel::Row> rows;
    for (const GoogleCalendarInfo &calendar : m_needs.google.calendars())
        rows.append({calendar.id, calendar.summary, m_needs.prefs.googleCalendarIDs().contains(calendar.id)});
    m_calendars.setRows(rows);
    Q_EMIT changed();
}

} // namespace velto
