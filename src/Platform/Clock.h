#pragma once

#include <QDateTime>
#include <chrono>
#include <functional>
#include <memory>

class QObject;

namespace velto {

/// A pending timer. Destroying the handle cancels it; nothing fires afterwards.
class Timer {
public:
    Timer() = default;
    Timer(const Timer &) = delete;
    Timer &operator=(const Timer &) = delete;
    virtual ~Timer() = default;
};
using TimerHandle = std::unique_ptr<Timer>;

/// Every "now" and every delay of the program comes from here, so that tests can step through time.
/// UI thread only.
class Clock {
public:
    using Duration = std::chrono::milliseconds;
    using Instant = std::chrono::steady_clock::time_point;

    Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;
    virtual ~Clock() = default;

    /// The user's time of day. It jumps when the clock is set and when the machine slept.
    virtual QDateTime wallTime() const = 0;
    /// Monotonic time since some fixed moment; the machine's sleep counts where the system can tell.
    virtual Instant now() const = 0;

    /// Calls `fire` once, after `delay`, on the UI thread.
    [[nodiscard]] virtual TimerHandle after(Duration delay, std::function<void()> fire) = 0;
    /// Calls `fire` again and again, roughly every `interval`: the timer is coarse, so that an idle program hardly wakes.
    [[nodiscard]] virtual TimerHandle every(Duration interval, std::function<void()> fire) = 0;
    /// Calls `task` in a later turn of the UI thread's event loop, unless `context` is gone by then.
    virtual void post(QObject *context, std::function<void()> task) = 0;
};

} // namespace velto
