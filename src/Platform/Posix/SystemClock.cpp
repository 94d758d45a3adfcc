#include "Platform/Posix/SystemClock.h"

#include "Platform/Clock.h"

#include <QMetaObject>
#include <QTimer>
#include <ctime>

namespace velto {

namespace {

class QtTimer final : public Timer {
public:
    QtTimer(Clock::Duration interval, bool once, std::function<void()> fire)
    {
        m_timer.setSingleShot(once);
        m_timer.setTimerType(once ? Qt::PreciseTimer : Qt::VeryCoarseTimer);
        // The callback may destroy this handle and itself with it: so a copy runs.
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [fire = std::move(fire)] {
            const auto running = fire;
            running();
        });
        m_timer.start(interval);
    }

private:
    QTimer m_timer;
};

class SystemClock final : public Clock {
public:
    QDateTime wallTime() const override { return QDateTime::currentDateTime(); }
    Instant now() const override;
    TimerHandle after(Duration delay, std::function<void()> fire) override
    {
        return std::make_unique<QtTimer>(delay, true, std::move(fire));
    }
    TimerHandle every(Duration interval, std::function<void()> fire) override
    {
        return std::make_unique<QtTimer>(interval, false, std::move(fire));
    }
    void post(QObject *context, std::function<void()> task) override
    {
        QMetaObject::invokeMethod(context, std::move(task), Qt::QueuedConnection);
    }
};

Instant SystemClock::now() const
{
#ifdef CLOCK_BOOTTIME
    // The steady clock stops while the machine sleeps, and hours-old data would count as fresh.
    timespec passed{};
    if (::clock_gettime(CLOCK_BOOTTIME, &passed) == 0)
        return Instant(std::chrono::seconds(passed.tv_sec) + std::chrono::nanoseconds(passed.tv_nsec));
#endif
    return std::chrono::steady_clock::now();
}

} // namespace

std::unique_ptr<Clock> systemClock()
{
    return std::make_unique<SystemClock>();
}

} // namespace velto
