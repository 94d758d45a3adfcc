#pragma once

#include <QtGlobal>
#include <memory>
#include <optional>
#include <string_view>

namespace velto {

/// What a log line of Claude Code says about one answer of the model: its time and its tokens.
///
/// Such a line is one JSON object with `type` "assistant", a `timestamp` and a `message` that holds `usage`. Nothing documents
/// the format; it is taken from the logs of Claude Code 2.1. A count that is missing or not an integer is 0. If a key occurs
/// twice, the last one counts.
struct UsageLine {
    qint64 at = 0; ///< milliseconds since 1970, UTC
    qint64 input = 0;
    qint64 output = 0;
    qint64 cacheRead = 0;
    qint64 cacheWrite = 0;

    bool operator==(const UsageLine &) const = default;
};

/// Reads such lines one after another and keeps its memory from one to the next: 4 bytes for each byte of the longest. Any
/// thread, one at a time.
class UsageLineParser {
public:
    UsageLineParser();
    UsageLineParser(const UsageLineParser &) = delete;
    UsageLineParser &operator=(const UsageLineParser &) = delete;
    ~UsageLineParser();

    /// Nothing for a line that isn't JSON (RFC 8259, with at most 1,024 levels) or isn't such a line.
    std::optional<UsageLine> parse(std::string_view line);

private:
    class Tokens;
    std::unique_ptr<Tokens> m_tokens;
};

} // namespace velto
