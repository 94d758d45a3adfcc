#pragma once

#include <QString>

namespace velto {

/// What works here and what doesn't, with what to do about it, for a report of a fault. Holds no secret. Needs the
/// application object; waits for tools and buses, a few seconds at most.
QString checkReport();

} // namespace velto
