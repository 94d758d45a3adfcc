#pragma once

#include <QString>
#include <optional>

namespace velto {

/// What works here and what doesn't, with what to do about it, for a report of a fault. Holds no secret. Needs the
/// application object; waits for tools and buses, a few seconds at most. `noDisplay` says why there is no display, if so.
QString checkReport(const std::optional<QString> &noDisplay);

} // namespace velto
