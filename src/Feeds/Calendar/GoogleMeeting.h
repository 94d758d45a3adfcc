#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QUrl>
#include <optional>

namespace velto {

/// One calendar of the user's account.
struct GoogleCalendarInfo {
    QString id;
    QString summary;
    std::optional<bool> primary = {};

    bool operator==(const GoogleCalendarInfo &) const = default;
};

/// One meeting of the coming day. All texts are untrusted: show them as plain text, and open the link through Workspace, which
/// refuses anything but http and https.
struct GoogleMeeting {
    QString id;
    QString title;
    QDateTime start;
    QDateTime end;
    std::optional<QUrl> joinURL = {};
    QString calendarID; ///< the calendar through which it was read

    bool operator==(const GoogleMeeting &) const = default;
};

/// The calendars in a reply, in its order; an item that lacks an id or a name is left out.
/// Throws WorkError if it isn't JSON. https://developers.google.com/calendar/api/v3/reference/calendarList/list
QList<GoogleCalendarInfo> parseCalendars(const QByteArray &json);

/// The meetings in a reply, in its order; an event that isn't one is left out.
/// Throws WorkError if it isn't JSON. https://developers.google.com/calendar/api/v3/reference/events/list
QList<GoogleMeeting> parseMeetings(const QByteArray &json, const QString &calendarID);

/// One event as a meeting; nothing for one that was cancelled, takes a whole day or can't be read.
/// https://developers.google.com/calendar/api/v3/reference/events#resource
std::optional<GoogleMeeting> meetingOf(const QJsonObject &event, const QString &calendarID);

/// An internet timestamp, to the second, with an offset or a Z: RFC 3339, section 5.6.
std::optional<QDateTime> internetDateTime(const QString &text);

} // namespace velto
