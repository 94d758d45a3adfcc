#pragma once

#include "Platform/Timer.h"

#include <QDateTime>

class QObject;

namespace velto {

class Clock;

/// A clock that stops until a test advances it.
class FakeClock {
public:
    explicit FakeClock(const QDateTime &start = QDateTime(QDate(2026, 11, 21), QTime(9, 0)));
    FakeClock(const FakeClock &) = delete;
    FakeClock &operator=(const FakeClock &) = delete;
    ~FakeClock();

    /// As the program sees it.
    Clock &clock() const;
    operator Clock &() const { return clock(); } // NOLINT(google-explicit-constructor): usable wherever a clock is needed

    QDateTime wallTime() const;
    Instant now() const;
    /// Lets time pass. What falls due on the way fires in order, and so does what that arms; posted tasks run in between.
    void advance(std::chrono::milliseconds step);
    /// Runs what was posted.
    void runPosted();
    /// Sets the user's clock without any time passing: the clock was set, or the machine slept.
    void setWallTime(const QDateTime &wall);
    int pendingTimers() const;

private:
    class Hands;
    std::unique_ptr<Hands> m_hands;
};

} // namespace velto
