#pragma once

#include "Platform/Clock.h"

namespace velto {

/// The machine's own time, on Qt's event loop.
class SystemClock final : public Clock {
public:
    QDateTime wallTime() const override { return QDateTime::currentDateTime(); }
    Instant now() const override;
    TimerHandle after(Duration delay, std::function<void()> fire) override;
    TimerHandle every(Duration interval, std::function<void()> fire) override;
    void post(QObject *context, std::function<void()> task) override;
};

} // namespace velto
