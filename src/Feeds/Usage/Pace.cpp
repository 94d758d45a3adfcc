#include "Feeds/Usage/Pace.h"

#include "Core/Texts.h"
#include "Core/Words.h"

#include <algorithm>

namespace velto {

namespace {

/// Before this much of the day's work a rate would mean little, in seconds.
constexpr double kEarly = 600;

QString projected(qint64 used, qint64 left, double elapsed, const QString &budget, const QDateTime &now)
{
    const double seconds = double(left) / (double(used) / elapsed);
    // Beyond a day no exact time is needed, and a huge number of seconds would exceed the calendar.
    const QDateTime moment = seconds < 86'400 ? now.addMSecs(qint64(seconds * 1000)) : now.addDays(1);
    if (moment.toLocalTime().date() != now.toLocalTime().date())
        return Words::tr("On pace to stay under your %1 budget today").arg(budget);
    return Words::tr("At this pace you reach your %1 budget at %2").arg(budget, shortTime(moment));
}

} // namespace

qint64 budgeted(const TokenUsage &usage)
{
    return sumOf(sumOf(usage.input, usage.output), usage.cacheWrite);
}

std::optional<QString> pace(const TokenUsage &usage, qint64 budget, const QDateTime &now)
{
    if (budget < 1 || !usage.first)
        return std::nullopt;
    const qint64 used = std::max<qint64>(budgeted(usage), 0);
    if (used >= budget)
        return Words::tr("Daily budget of %1 reached").arg(compact(budget));
    const qint64 left = budget - used;
    const double elapsed = double(usage.first->msecsTo(now)) / 1000;
    if (elapsed > kEarly && used >= 1)
        return projected(used, left, elapsed, compact(budget), now);
    return Words::tr("%1 left of today's %2").arg(compact(left), compact(budget));
}

QString greeting(const QDateTime &now)
{
    const int hour = now.toLocalTime().time().hour();
    if (hour >= 5 && hour < 12)
        return Words::tr("Good morning.");
    return hour >= 12 && hour < 17 ? Words::tr("Good afternoon.") : Words::tr("Good evening.");
}

} // namespace velto
