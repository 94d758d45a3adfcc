#pragma once

#include <QtGlobal>
#include <optional>
#include <string>
#include <string_view>

namespace velto {

/// Milliseconds since 1970 of an ISO 8601 time with fractions of a second and a zone, such as "2026-11-15T08:01:02.345Z" or
/// "2026-11-15T09:01:02.345+01:00". Nothing for other spellings and for dates that don't exist.
std::optional<qint64> parseLogTime(std::string_view text);

/// Where the JSON number that begins at `at` ends, or nothing.
const char *numberEnd(const char *at, const char *end);

/// The value of a JSON number that is an integer of 64 bits, however it is written ("12", "12.0"), else 0.
qint64 integer(std::string_view number);

/// The JSON text between `at`, which is after its opening quotation mark, and the closing one. Uses `decoded` if it holds
/// escapes; an escaped character beyond ASCII comes back as 0: no text that is looked for has one.
std::string_view spokenText(const char *at, const char *end, std::string &decoded);

} // namespace velto
