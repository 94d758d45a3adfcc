#pragma once

#include "Platform/Timer.h"

#include <QDateTime>
#include <functional>

class QObject;

namespace velto {

/// Every "now" and every delay of the program comes from here, so that tests can step through time.
/// UI thread only.
class Clock {
public:
    using Duration = std::chrono::milliseconds;

    Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;
    virtual ~Clock() = default;

    /// The user's time of day. Jumps when the clock is set and after the machine has slept.
    virtual QDateTime wallTime() const = 0;
    /// Monotonic time since some fixed moment; the machine's sleep counts where the system can tell.
    virtual Instant now() const = 0;

    /// Calls `fire` once, after `delay`, on the UI thread.
    [[nodiscard]] virtual TimerHandle after(Duration delay, std::function<void()> fire) = 0;
    /// Calls `fire` repeatedly, roughly every `interval`: the timer is coarse, so that an idle program hardly wakes.
    [[nodiscard]] virtual TimerHandle every(Duration interval, std::function<void()> fire) = 0;
    /// Calls `task` in a later turn of the UI thread's event loop, unless `context` is gone by then.
    virtual void post(QObject *context, std::function<void()> task) = 0;
};

} // namespace velto
