#include "Feeds/Usage/UsageBytes.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace velto {

namespace {

// A quotation mark inside a JSON string is escaped, so this never occurs in a text.
constexpr std::string_view kWord = "\"assistant\"";
// How JSON may escape one of its letters: \u0061 to \u007a. Claude Code never does.
constexpr std::string_view kEscape = "\\u00";
constexpr std::size_t kEscapeSize = 5;

bool isHint(const char *at, const char *end)
{
    const auto left = std::size_t(end - at);
    if (left >= kWord.size() && std::memcmp(at, kWord.data(), kWord.size()) == 0)
        return true;
    return left >= kEscapeSize && std::memcmp(at, kEscape.data(), kEscape.size()) == 0 && (at[4] == '6' || at[4] == '7');
}

const char *findOneByOne(const char *begin, const char *end)
{
    while (begin != end && !isHint(begin, end))
        ++begin;
    return begin;
}

/// 16 bytes at once; GCC and Clang support these vectors on every processor.
using Bytes = unsigned char __attribute__((vector_size(16)));
constexpr std::ptrdiff_t kStep = 4 * sizeof(Bytes);

Bytes load(const char *from)
{
    Bytes bytes;
    std::memcpy(&bytes, from, sizeof(bytes));
    return bytes;
}

/// Non-zero where three letters of the word, or of an escape, are in place.
Bytes mayBeHint(const char *at)
{
    const Bytes first = load(at);
    const auto word = (first == '"') & (load(at + 2) == 's') & (load(at + 10) == '"');
    const auto escape = (first == '\\') & (load(at + 1) == 'u') & ((load(at + 4) & 0xFE) == '6');
    return Bytes(word | escape);
}

bool any(Bytes bytes)
{
    std::array<std::uint64_t, 2> halves{};
    std::memcpy(halves.data(), &bytes, sizeof(bytes));
    return (halves[0] | halves[1]) != 0;
}

/// The first hint that starts in the 16 bytes at `at`; their end if there is none.
const char *findIn(const char *at, const char *end)
{
    std::array<char, sizeof(Bytes)> marks{};
    const Bytes bytes = mayBeHint(at);
    std::memcpy(marks.data(), &bytes, sizeof(bytes));
    for (const char mark : marks) {
        if (mark && isHint(at, end))
            return at;
        ++at;
    }
    return at;
}

/// Non-zero where a backslash precedes anything but the usual letters. That may still be a rarer escape, or the second of two
/// backslashes.
Bytes mayBeBadEscape(const char *at)
{
    const Bytes next = load(at + 1);
    const auto usual = (next == 'n') | (next == '"') | (next == '\\') | (next == 't') | (next == 'r');
    return Bytes((load(at) == '\\') & ~usual);
}

/// `at`, or the backslash before it if the two form an escape.
const char *escapeAt(const char *begin, const char *at)
{
    const char *first = at;
    while (first != begin && first[-1] == '\\')
        --first;
    return at - (at - first) % 2;
}

bool isEscapeName(char c)
{
    return c == '"' || c == '\\' || c == '/' || c == 'b' || c == 'f' || c == 'n' || c == 'r' || c == 't' || c == 'u';
}

bool isHex(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// Checks the escapes that begin before `last`.
bool areEscapesValidIn(const char *at, const char *last, const char *end)
{
    constexpr std::ptrdiff_t kCode = 4;
    while (at < last) {
        if (*at++ != '\\')
            continue;
        if (at == end || !isEscapeName(*at))
            return false;
        if (*at++ != 'u')
            continue;
        if (end - at < kCode || !std::all_of(at, at + kCode, isHex))
            return false;
        at += kCode;
    }
    return true;
}

} // namespace

const char *findUsageHint(const char *begin, const char *end)
{
    constexpr std::ptrdiff_t kReach = 10; // how far behind its position a hint's bytes are read
    for (; end - begin >= kStep + kReach; begin += kStep) {
        if (!any(mayBeHint(begin) | mayBeHint(begin + 16) | mayBeHint(begin + 32) | mayBeHint(begin + 48)))
            continue;
        for (const char *at = begin; at != begin + kStep; at += sizeof(Bytes)) {
            if (!any(mayBeHint(at)))
                continue;
            if (const char *const found = findIn(at, end); found != at + sizeof(Bytes))
                return found;
        }
    }
    return findOneByOne(begin, end);
}

bool areEscapesValid(const char *begin, const char *end)
{
    const char *at = begin;
    for (; end - at > kStep; at += kStep) {
        if (any(mayBeBadEscape(at) | mayBeBadEscape(at + 16) | mayBeBadEscape(at + 32) | mayBeBadEscape(at + 48))
            && !areEscapesValidIn(escapeAt(begin, at), at + kStep, end))
            return false;
    }
    return areEscapesValidIn(escapeAt(begin, at), end, end);
}

} // namespace velto
