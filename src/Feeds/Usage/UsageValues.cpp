#include "Feeds/Usage/UsageValues.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>

namespace velto {

namespace {

/// The number that the digits at `at` form, or nothing.
std::optional<int> digits(std::string_view text, std::size_t at, std::size_t length)
{
    int number = 0;
    for (const char digit : text.substr(at, length)) {
        if (digit < '0' || digit > '9')
            return std::nullopt;
        number = number * 10 + (digit - '0');
    }
    return number;
}

/// The offset from UTC in minutes, positive to the east.
std::optional<int> zone(std::string_view text)
{
    if (text == "Z")
        return 0;
    if (text.size() != 6 || (text[0] != '+' && text[0] != '-') || text[3] != ':')
        return std::nullopt;
    const auto hours = digits(text, 1, 2);
    const auto minutes = digits(text, 4, 2);
    if (!hours || !minutes || *hours > 23 || *minutes > 59)
        return std::nullopt;
    return (text[0] == '-' ? -1 : 1) * (*hours * 60 + *minutes);
}

} // namespace

std::optional<qint64> parseLogTime(std::string_view text)
{
    using namespace std::chrono;
    constexpr std::string_view kShape = "0000-00-00T00:00:00.";
    if (text.size() < kShape.size())
        return std::nullopt;
    for (std::size_t i = 0; i < kShape.size(); ++i) {
        if (kShape[i] != '0' && text[i] != kShape[i])
            return std::nullopt;
    }
    const auto y = digits(text, 0, 4);
    const auto mo = digits(text, 5, 2);
    const auto d = digits(text, 8, 2);
    const auto h = digits(text, 11, 2);
    const auto mi = digits(text, 14, 2);
    const auto s = digits(text, 17, 2);
    if (!y || !mo || !d || !h || !mi || !s || *h > 23 || *mi > 59 || *s > 59)
        return std::nullopt;
    const year_month_day date{year(*y), month(unsigned(*mo)), day(unsigned(*d))};
    const std::size_t fractionEnd = std::min(text.find_first_not_of("0123456789", kShape.size()), text.size());
    const std::size_t length = fractionEnd - kShape.size();
    const auto east = zone(text.substr(fractionEnd));
    if (!date.ok() || length == 0 || !east)
        return std::nullopt;
    int milliseconds = *digits(text, kShape.size(), std::min<std::size_t>(length, 3));
    for (std::size_t i = length; i < 3; ++i)
        milliseconds *= 10;
    const qint64 minutes = qint64(sys_days(date).time_since_epoch().count()) * 24 * 60 + *h * 60 + *mi - *east;
    return (minutes * 60 + *s) * 1000 + milliseconds;
}

const char *numberEnd(const char *at, const char *end)
{
    const auto take = [&at, end](char wanted) { return at != end && *at == wanted && (++at, true); };
    const auto digits = [&at, end] {
        const char *const begin = at;
        while (at != end && *at >= '0' && *at <= '9')
            ++at;
        return at != begin;
    };
    take('-');
    if (!take('0') && !digits())
        return nullptr;
    if (take('.') && !digits())
        return nullptr;
    if (take('e') || take('E')) {
        if (!take('+'))
            take('-');
        if (!digits())
            return nullptr;
    }
    return at;
}

qint64 integer(std::string_view number)
{
    const char *const end = number.data() + number.size();
    qint64 whole = 0;
    if (const auto read = std::from_chars(number.data(), end, whole); read.ec == std::errc() && read.ptr == end)
        return whole;
    double real = 0;
    const auto read = std::from_chars(number.data(), end, real);
    const bool isWhole = read.ec == std::errc() && read.ptr == end && std::trunc(real) == real && std::abs(real) < 0x1p63;
    return isWhole ? qint64(real) : 0;
}

std::string_view spokenText(const char *at, const char *end, std::string &decoded)
{
    constexpr std::string_view kNames = "bfnrt";
    constexpr std::string_view kMeanings = "\b\f\n\r\t";
    const char *const begin = at;
    while (at != end && *at != '"' && *at != '\\')
        ++at;
    if (at == end || *at == '"')
        return {begin, std::size_t(at - begin)};
    decoded.assign(begin, at);
    while (at != end && *at != '"') {
        char meant = *at++;
        if (meant == '\\' && at != end) {
            meant = *at++;
            if (const auto known = kNames.find(meant); known != std::string_view::npos) {
                meant = kMeanings[known];
            } else if (meant == 'u') {
                unsigned code = 0;
                const char *const last = at + std::min<std::ptrdiff_t>(4, end - at);
                std::from_chars(at, last, code, 16);
                meant = code < 0x80 ? char(code) : '\0';
                at = last;
            }
        }
        decoded.push_back(meant);
    }
    return decoded;
}

} // namespace velto
