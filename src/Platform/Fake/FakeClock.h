#pragma once

#include "Platform/Clock.h"

#include <QPointer>
#include <deque>
#include <map>

namespace velto {

/// A clock that stands still until a test steps it.
class FakeClock final : public Clock {
public:
    explicit FakeClock(QDateTime start = QDateTime(QDate(2026, 11, 21), QTime(9, 0)));

    QDateTime wallTime() const override { return m_wall; }
    Instant now() const override { return Instant(m_elapsed); }
    TimerHandle after(Duration delay, std::function<void()> fire) override;
    TimerHandle every(Duration interval, std::function<void()> fire) override;
    void post(QObject *context, std::function<void()> task) override;

    /// Lets time pass. What falls due on the way fires in order, and so does what that arms; posted tasks run in between.
    void advance(Duration step);
    /// Runs what was posted.
    void runPosted();
    /// Sets the user's clock without any time passing: the clock was set, or the machine slept.
    void setWallTime(const QDateTime &wall) { m_wall = wall; }
    int pendingTimers() const { return int(m_timers.size()); }

private:
    class Entry;
    struct Armed {
        std::function<void()> fire;
        Duration interval{0}; ///< 0 for one-shot timers
    };
    using Key = std::pair<Duration, quint64>;

    TimerHandle arm(Duration delay, Armed armed);

    QDateTime m_wall;
    Duration m_elapsed{0};
    quint64 m_nextId = 0;
    std::map<Key, std::shared_ptr<Armed>> m_timers;
    std::deque<std::pair<QPointer<QObject>, std::function<void()>>> m_posted;
    std::shared_ptr<FakeClock *> m_self;

public:
    ~FakeClock() override;
};

} // namespace velto
