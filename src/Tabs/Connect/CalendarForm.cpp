#include "Tabs/Connect/CalendarForm.h"

#include "Core/Link.h"
#include "Core/Prefs.h"
#include "Core/Texts.h"
#include "Feeds/Calendar/GoogleCalendar.h"
#include "Feeds/Everyday/EverydaySource.h"

#include <QLocale>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

const QString kManual = u"manual"_s;
const QString kGoogle = u"google"_s;

/// Reads times as people write them: in the form of their language, with or without AM and PM, or the hour alone.
QTime readTime(const QString &text)
{
    const QString typed = text.trimmed();
    if (const QTime own = QLocale().toTime(typed, QLocale::ShortFormat); own.isValid())
        return own;
    for (const QString &form : {u"H:mm"_s, u"h:mm ap"_s, u"h:mmap"_s, u"H.mm"_s, u"HHmm"_s, u"h ap"_s, u"hap"_s, u"H"_s}) {
        if (const QTime time = QTime::fromString(typed, form); time.isValid())
            return time;
    }
    return {};
}

} // namespace

CalendarForm::CalendarForm(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
    , m_sources({"value"_ba, "text"_ba, "selected"_ba})
    , m_calendars({"calendarId"_ba, "summary"_ba, "chosen"_ba})
    , m_day(needs.clock)
{
    connect(&m_needs.google, &GoogleCalendar::changed, this, &CalendarForm::update);
    reread();
}

bool CalendarForm::google() const
{
    return m_needs.prefs.calendarSource() == Prefs::CalendarSource::Google;
}

void CalendarForm::chooseSource(const QString &value)
{
    const bool google = value == kGoogle;
    if (google == this->google())
        return;
    m_needs.prefs.setCalendarSource(google ? Prefs::CalendarSource::Google : Prefs::CalendarSource::Manual);
    m_needs.everyday.refresh();
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

void CalendarForm::cancelConnecting()
{
    m_needs.google.cancelConnecting();
}

void CalendarForm::disconnectGoogle()
{
    m_needs.google.disconnect();
}

void CalendarForm::choose(const QString &calendarId, bool chosen)
{
    m_needs.google.choose(calendarId, chosen);
}

void CalendarForm::save()
{
    if (timeUnreadable() || m_day.unreadable())
        return;
    m_needs.prefs.setMeetingTitle(m_title);
    m_needs.prefs.setMeetingStart(QDateTime(m_day.date(), m_start));
    m_needs.prefs.setMeetingURL(withoutPassword(m_link));
    m_needs.prefs.set(Prefs::Module::Calendar, true);
    m_needs.everyday.loadCalendar();
    m_doneText = tr("Saved.");
    Q_EMIT edited();
}

void CalendarForm::reread()
{
    m_title = m_needs.prefs.meetingTitle();
    const QDateTime start = m_needs.prefs.meetingStart().toLocalTime();
    m_day.setDate(start.date());
    m_start = QTime(start.time().hour(), start.time().minute());
    m_time = shortTime(start);
    m_link = m_needs.prefs.meetingURL();
    m_doneText.clear();
    Q_EMIT edited();
    update();
}

void CalendarForm::setTime(const QString &text)
{
    if (text == m_time)
        return;
    m_time = text;
    m_start = readTime(text);
    m_doneText.clear();
    Q_EMIT edited();
}

void CalendarForm::update()
{
    m_sources.setRows({{kManual, tr("Add meetings manually"), !google()}, {kGoogle, tr("Google Calendar"), google()}});
    QList<RowModel::Row> rows;
    for (const GoogleCalendarInfo &calendar : m_needs.google.choices())
        rows.append({calendar.id, calendar.summary, m_needs.prefs.googleCalendarIDs().contains(calendar.id)});
    m_calendars.setRows(rows);
    const Seen now{google(), linked(), connecting(), readingCalendars(), errorText()};
    if (std::exchange(m_seen, now) != now)
        Q_EMIT changed();
}

} // namespace velto
