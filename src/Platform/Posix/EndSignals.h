#pragma once

#include "Platform/Posix/Descriptor.h"

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace velto {

/// Ends the program as its menu does when it is asked to end from outside: SIGTERM, SIGINT, SIGHUP. The second one ends it at
/// once, whatever it is doing. One object at a time; needs an event loop.
class EndSignals {
public:
    /// `ended` is called on the UI thread.
    explicit EndSignals(const std::function<void()> &ended);
    EndSignals(const EndSignals &) = delete;
    EndSignals &operator=(const EndSignals &) = delete;
    ~EndSignals();

private:
    Descriptor m_read;
    Descriptor m_write;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace velto
