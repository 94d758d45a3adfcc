#pragma once

#include <QDateTime>
#include <array>
#include <limits>
#include <optional>

namespace velto {

/// Logs may hold any number: sums saturate.
inline qint64 sumOf(qint64 a, qint64 b)
{
    using Limits = std::numeric_limits<qint64>;
    if (b > 0 ? a > Limits::max() - b : a < Limits::min() - b)
        return b > 0 ? Limits::max() : Limits::min();
    return a + b;
}

/// The tokens that Claude Code has used in one day, summed over all its sessions.
struct TokenUsage {
    qint64 input = 0; ///< tokens sent that no cache held
    qint64 output = 0; ///< tokens that the model wrote
    qint64 cacheRead = 0; ///< tokens sent that came out of the cache
    qint64 cacheWrite = 0; ///< tokens sent that went into the cache
    qint64 turns = 0; ///< counted log lines with an answer of the model
    std::optional<QDateTime> first; ///< the earliest of them, in UTC
    /// What counts against the budget (input, output, cacheWrite), by the hours since midnight. The last of a longer day holds
    /// the rest.
    std::array<qint64, 24> hours{};

    bool operator==(const TokenUsage &) const = default;
};

} // namespace velto
