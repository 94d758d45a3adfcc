#include "Feeds/Calendar/NextEvent.h"

#include "Core/Link.h"
#include "Core/Texts.h"
#include "Feeds/Calendar/GoogleMeeting.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kMinute = 60'000;
constexpr qint64 kHour = 60 * kMinute;

QString translated(const char *text)
{
    return QCoreApplication::translate("velto::NextEvent", text);
}

/// Seconds since 1970 with their fraction: "1795251600.0".
QString secondsText(const QDateTime &moment)
{
    const QString text = QString::number(double(moment.toMSecsSinceEpoch()) / 1000, 'f', QLocale::FloatingPointShortest);
    return text.contains(u'.') ? text : text + ".0"_L1;
}

} // namespace

std::optional<NextEvent> NextEvent::typedIn(const QString &title, const QDateTime &start, const QString &link,
                                            const QDateTime &now)
{
    const QString name = title.trimmed();
    // In UTC: an instant, which stays the same when the user travels.
    const QDateTime from = start.toUTC();
    const QDateTime until = from.addMSecs(kHour);
    if (name.isEmpty() || until <= now)
        return std::nullopt;
    return NextEvent{
        u"manual-"_s + secondsText(from), name, from, until, translated("Added in Velto"), typedLink(link),
    };
}

NextEvent NextEvent::from(const GoogleMeeting &meeting)
{
    // A link that the browser can't open, such as "zoommtg:", isn't offered.
    const auto link = meeting.joinURL && opensInBrowser(*meeting.joinURL) ? meeting.joinURL : std::nullopt;
    return {u"google-"_s + meeting.id, meeting.title, meeting.start, meeting.end, translated("Google Calendar"), link};
}

QString NextEvent::relative(const QDateTime &now) const
{
    const qint64 left = now.msecsTo(start);
    if (left <= 0)
        return translated("now · until %1").arg(shortTime(end));
    if (left < kHour)
        return translated("in %1 min").arg(left / kMinute + 1);
    return translated("at %1").arg(shortTime(start));
}

std::optional<QDateTime> NextEvent::nextTurn(const QDateTime &now) const
{
    const qint64 left = now.msecsTo(start);
    if (left <= 0)
        return std::nullopt;
    const qint64 stays = left < kHour ? left % kMinute : left - kHour;
    return now.addMSecs(qMin(stays + 1, left));
}

QString NextEvent::detail() const
{
    if (location)
        return *location;
    return joinURL ? joinURL->host() : QString();
}

} // namespace velto
