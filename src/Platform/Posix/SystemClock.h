#pragma once

#include <memory>

namespace velto {

class Clock;

/// The machine's own time, on Qt's event loop.
std::unique_ptr<Clock> systemClock();

} // namespace velto
