#pragma once

#include <QDateTime>
#include <QString>
#include <QUrl>
#include <optional>

namespace velto {

/// One meeting of one of the user's Google calendars.
struct GoogleMeeting {
    QString id;
    QString title;
    QDateTime start;
    QDateTime end;
    std::optional<QUrl> joinURL; ///< the video link
    QString calendarID; ///< the calendar through which it was read

    bool operator==(const GoogleMeeting &) const = default;
};

} // namespace velto
