#include "Hooks/HookRequest.h"

#include <charconv>

namespace velto {

namespace {

constexpr QByteArrayView kLineEnd = "\r\n";
constexpr QByteArrayView kHeaderEnd = "\r\n\r\n";

/// Takes the same time wherever the two differ.
bool sameSecret(QByteArrayView given, QByteArrayView secret)
{
    volatile unsigned difference = given.size() == secret.size() ? 0 : 1;
    for (qsizetype i = 0; i < given.size() && !secret.isEmpty(); ++i)
        difference = difference | unsigned(quint8(given[i]) ^ quint8(secret[i % secret.size()]));
    return difference == 0;
}

bool sameName(QByteArrayView given, QByteArrayView lowerCase)
{
    return given.size() == lowerCase.size() && std::equal(given.begin(), given.end(), lowerCase.begin(), [](char a, char b) {
               return (a >= 'A' && a <= 'Z' ? char(a + 32) : a) == b;
           });
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

QByteArrayView trimmed(QByteArrayView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

/// Anything but a decimal integer counts as 0.
qsizetype integer(QByteArrayView text)
{
    if (text.startsWith('+') && !text.startsWith("+-"))
        text = text.sliced(1);
    qsizetype value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    return error == std::errc() && end == text.end() ? value : 0;
}

/// Cuts the first piece off `rest`, up to `separator` or the end.
QByteArrayView takePiece(QByteArrayView &rest, QByteArrayView separator)
{
    const auto at = rest.indexOf(separator);
    const auto piece = at < 0 ? rest : rest.first(at);
    rest = at < 0 ? QByteArrayView() : rest.sliced(at + separator.size());
    return piece;
}

} // namespace

HookRequest::HookRequest(QByteArray token)
    : m_token(std::move(token))
{
}

HookRequest::State HookRequest::feed(QByteArrayView bytes, bool finished)
{
    if (m_state == State::More) {
        m_buffer.append(bytes);
        m_state = judge(finished);
        if (m_state != State::More && m_state != State::Complete)
            release();
    }
    return m_state;
}

HookRequest::State HookRequest::judge(bool finished)
{
    if (m_buffer.size() > kMaxSize)
        return State::TooLarge;
    if (m_bodyStart == 0) {
        const auto end = m_buffer.indexOf(kHeaderEnd, m_searched);
        if (end < 0) {
            // The end of the header may begin in the last three bytes.
            m_searched = std::max<qsizetype>(0, m_buffer.size() - (kHeaderEnd.size() - 1));
            return finished ? State::Broken : State::More;
        }
        m_bodyStart = end + kHeaderEnd.size();
        if (!acceptHeader(QByteArrayView(m_buffer).first(end)))
            return State::Refused;
        // Reserves room for the rest once, rather than again and again.
        if (m_bodyLength > 0 && m_bodyLength <= kMaxSize - m_bodyStart)
            m_buffer.reserve(m_bodyStart + m_bodyLength);
    }
    return finished || m_buffer.size() - m_bodyStart >= m_bodyLength ? State::Complete : State::More;
}

bool HookRequest::acceptHeader(QByteArrayView header)
{
    bool first = true;
    bool knowsToken = false;
    while (!header.isEmpty()) {
        const auto line = takePiece(header, kLineEnd);
        if (line.isEmpty())
            continue;
        if (first) {
            first = false;
            if (!acceptRequestLine(line))
                return false;
            continue;
        }
        auto value = line;
        const auto name = takePiece(value, ":");
        if (name.size() == line.size())
            continue; // no colon
        // Browsers send an Origin, hooks don't. Of several headers with one name the last counts.
        if (sameName(name, "origin"))
            return false;
        if (sameName(name, "x-velto-token"))
            knowsToken = sameSecret(trimmed(value), m_token);
        else if (sameName(name, "content-length"))
            m_bodyLength = integer(trimmed(value));
    }
    return !first && knowsToken;
}

bool HookRequest::acceptRequestLine(QByteArrayView line)
{
    const auto method = takePiece(line, " ");
    const auto path = takePiece(line, " ");
    m_path = path == "/permission" ? Path::Permission : Path::Event;
    return method == "POST" && (path == "/event" || path == "/permission");
}

bool HookRequest::mayHaveMore() const
{
    return m_state != State::Complete || m_buffer.size() - m_bodyStart > m_bodyLength;
}

void HookRequest::release()
{
    m_buffer = QByteArray();
    m_bodyStart = 0;
}

QByteArray hookReply(QByteArrayView status, QByteArrayView body)
{
    QByteArray reply;
    reply.reserve(128 + body.size());
    reply.append("HTTP/1.1 ").append(status);
    reply.append("\r\nConnection: close\r\nContent-Type: application/json\r\nContent-Length: ");
    reply.append(QByteArray::number(body.size())).append("\r\n\r\n").append(body);
    return reply;
}

QByteArray permissionReply(std::optional<bool> decision)
{
    if (!decision)
        return hookReply("204 No Content");
    return hookReply("200 OK",
                     *decision ? R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest",)"
                                 R"("decision":{"behavior":"allow"}}})"
                               : R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest",)"
                                 R"("decision":{"behavior":"deny","message":"Denied from Velto"}}})");
}

} // namespace velto
