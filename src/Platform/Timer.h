#pragma once

#include <chrono>
#include <memory>

namespace velto {

/// A pending timer of the Clock. Destroying the handle cancels it; nothing fires afterwards.
class Timer {
public:
    Timer() = default;
    Timer(const Timer &) = delete;
    Timer &operator=(const Timer &) = delete;
    virtual ~Timer() = default;
};
using TimerHandle = std::unique_ptr<Timer>;

/// A moment of the Clock's monotonic time.
using Instant = std::chrono::steady_clock::time_point;

} // namespace velto
