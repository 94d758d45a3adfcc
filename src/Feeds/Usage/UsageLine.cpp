#include "Feeds/Usage/UsageLine.h"

#include "Feeds/Usage/UsageBytes.h"
#include "Feeds/Usage/UsageValues.h"

#include <algorithm>
#include <simdjson.h>
#include <string>

namespace velto {

namespace {

constexpr int kDeepest = 1024;

bool endsScalar(char c)
{
    return c == ',' || c == ']' || c == '}' || c == ':' || c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

} // namespace

/// One line, split into tokens by simdjson, and a walk over them. simdjson's own parsers don't fit: one rejects numbers beyond
/// 64 bits and lone surrogates, which Claude Code writes; the other skips what isn't JSON.
class UsageLineParser::Tokens {
public:
    std::optional<UsageLine> read(std::string_view line);

private:
    /// Which object this is: it decides what the keys mean.
    enum class Place { Line, Message, Usage, Elsewhere };

    bool find(std::string_view line);
    char peek() const { return m_next == m_last ? '\0' : m_begin[*m_next]; }
    bool take(char wanted) { return peek() == wanted && (++m_next, true); }
    std::string_view takeText();
    std::optional<std::string_view> takeScalar();

    bool object(Place place, int depth);
    bool array(int depth);
    bool value(Place place, int depth);
    bool field(Place place, int depth);
    bool lineField(std::string_view key, int depth);
    bool countField(qint64 &count, int depth);
    qint64 *countNamed(std::string_view key);

    std::unique_ptr<simdjson::internal::dom_parser_implementation> m_finder;
    std::size_t m_capacity = 0;
    std::string m_decoded;

    const char *m_begin = nullptr;
    const char *m_end = nullptr;
    const std::uint32_t *m_next = nullptr; ///< the offset of the next token in the line
    const std::uint32_t *m_last = nullptr;

    UsageLine m_line;
    bool m_isAnswer = false;
    bool m_hasUsage = false;
    std::optional<qint64> m_time;
};

std::optional<UsageLine> UsageLineParser::Tokens::read(std::string_view line)
{
    m_isAnswer = false;
    m_hasUsage = false;
    m_time.reset();
    if (!find(line) || !take('{') || !object(Place::Line, 1) || m_next != m_last)
        return std::nullopt;
    // The walk doesn't look into texts; their escapes are checked only now.
    if (!m_isAnswer || !m_hasUsage || !m_time || !areEscapesValid(m_begin, m_end))
        return std::nullopt;
    m_line.at = *m_time;
    return m_line;
}

/// False if a text isn't closed, holds control characters or isn't UTF-8. A token is a bracket, a colon, a comma, or the start
/// of a text, a number or anything else.
bool UsageLineParser::Tokens::find(std::string_view line)
{
    constexpr std::size_t kLeast = 16 * 1024;
    if (!m_finder || m_capacity < line.size()) {
        m_capacity = std::max({kLeast, line.size(), 2 * m_capacity});
        m_finder.reset();
        if (simdjson::get_active_implementation()->create_dom_parser_implementation(m_capacity, kDeepest, m_finder)
            != simdjson::SUCCESS)
            return false;
    }
    const auto *const bytes = reinterpret_cast<const std::uint8_t *>(line.data());
    if (m_finder->stage1(bytes, line.size(), simdjson::stage1_mode::regular) != simdjson::SUCCESS)
        return false;
    m_begin = line.data();
    m_end = line.data() + line.size();
    m_next = m_finder->structural_indexes.get();
    m_last = m_next + m_finder->n_structural_indexes;
    return true;
}

/// Valid until the next call.
std::string_view UsageLineParser::Tokens::takeText()
{
    return spokenText(m_begin + *m_next++ + 1, m_end, m_decoded);
}

/// A number, true, false or null.
std::optional<std::string_view> UsageLineParser::Tokens::takeScalar()
{
    if (m_next == m_last)
        return std::nullopt;
    const char *const begin = m_begin + *m_next++;
    const std::string_view rest(begin, std::size_t(m_end - begin));
    const char *end = nullptr;
    for (const std::string_view word : {"true", "false", "null"}) {
        if (rest.starts_with(word))
            end = begin + word.size();
    }
    if (!end)
        end = numberEnd(begin, m_end);
    if (!end || (end != m_end && !endsScalar(*end)))
        return std::nullopt;
    return std::string_view(begin, std::size_t(end - begin));
}

/// Starts after the opening brace.
bool UsageLineParser::Tokens::object(Place place, int depth)
{
    if (take('}'))
        return true;
    do {
        if (peek() != '"' || !field(place, depth))
            return false;
    } while (take(','));
    return take('}');
}

/// Starts after the opening bracket.
bool UsageLineParser::Tokens::array(int depth)
{
    if (take(']'))
        return true;
    do {
        if (!value(Place::Elsewhere, depth))
            return false;
    } while (take(','));
    return take(']');
}

bool UsageLineParser::Tokens::value(Place place, int depth)
{
    switch (peek()) {
    case '{':
        ++m_next;
        return depth < kDeepest && object(place, depth + 1);
    case '[':
        ++m_next;
        return depth < kDeepest && array(depth + 1);
    case '"':
        ++m_next;
        return true;
    default:
        return takeScalar().has_value();
    }
}

bool UsageLineParser::Tokens::field(Place place, int depth)
{
    if (place == Place::Elsewhere) {
        ++m_next;
        return take(':') && value(Place::Elsewhere, depth);
    }
    const std::string_view key = takeText();
    if (!take(':'))
        return false;
    if (place == Place::Line)
        return lineField(key, depth);
    if (place == Place::Message && key == "usage") {
        m_line = {};
        m_hasUsage = peek() == '{';
        return value(Place::Usage, depth);
    }
    qint64 *const count = place == Place::Usage ? countNamed(key) : nullptr;
    return count ? countField(*count, depth) : value(Place::Elsewhere, depth);
}

bool UsageLineParser::Tokens::lineField(std::string_view key, int depth)
{
    if (key == "message") {
        m_hasUsage = false;
        return value(Place::Message, depth);
    }
    if (key == "type") {
        m_isAnswer = false;
        if (peek() != '"')
            return value(Place::Elsewhere, depth);
        m_isAnswer = takeText() == "assistant";
        return true;
    }
    if (key == "timestamp") {
        m_time.reset();
        if (peek() != '"')
            return value(Place::Elsewhere, depth);
        m_time = parseLogTime(takeText());
        return true;
    }
    return value(Place::Elsewhere, depth);
}

qint64 *UsageLineParser::Tokens::countNamed(std::string_view key)
{
    if (key == "input_tokens")
        return &m_line.input;
    if (key == "output_tokens")
        return &m_line.output;
    if (key == "cache_read_input_tokens")
        return &m_line.cacheRead;
    return key == "cache_creation_input_tokens" ? &m_line.cacheWrite : nullptr;
}

bool UsageLineParser::Tokens::countField(qint64 &count, int depth)
{
    count = 0;
    const char first = peek();
    if (first != '-' && (first < '0' || first > '9'))
        return value(Place::Elsewhere, depth);
    const auto number = takeScalar();
    if (number)
        count = integer(*number);
    return number.has_value();
}

UsageLineParser::UsageLineParser()
    : m_tokens(std::make_unique<Tokens>())
{
}

UsageLineParser::~UsageLineParser() = default;

std::optional<UsageLine> UsageLineParser::parse(std::string_view line)
{
    return m_tokens->read(line);
}

} // namespace velto
