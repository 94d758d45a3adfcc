#include "Feeds/Usage/UsageFile.h"

#include "Feeds/Usage/UsageBytes.h"

#include <QFile>
#include <algorithm>
#include <cstring>

namespace velto {

namespace {

constexpr std::size_t kBuffer = 256 * 1024;

/// The place after the last line feed before `end`, or `begin`.
const char *lineBegin(const char *begin, const char *end)
{
    return std::find(std::reverse_iterator(end), std::reverse_iterator(begin), '\n').base();
}

const char *lineEnd(const char *begin, const char *end)
{
    const void *const found = std::memchr(begin, '\n', std::size_t(end - begin));
    return found ? static_cast<const char *>(found) : end;
}

} // namespace

UsageFile::UsageFile(const std::atomic_bool &stopped)
    : m_stopped(stopped)
    , m_buffer(new char[kBuffer])
{
}

quint64 UsageFile::read(const QString &path, quint64 begin, quint64 end, const Found &found)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !file.seek(qint64(begin)))
        return begin;
    m_found = &found;
    m_held = 0;
    m_unread = end - begin;
    m_consumed = begin;
    std::size_t seen = 0; // leading bytes of the buffer known to hold no line feed
    while (const std::size_t got = fill(file, m_held)) {
        m_held += got;
        takeLines(seen);
        if (m_held == kBuffer && !readLongLine(file))
            break;
        seen = m_held;
    }
    return m_consumed;
}

/// Reads as much as fits into the buffer from `at`. 0 at the end, after a failure and once stopped.
std::size_t UsageFile::fill(QFile &file, std::size_t at)
{
    if (m_stopped)
        return 0;
    const auto wanted = std::min<quint64>(kBuffer - at, m_unread);
    const qint64 got = wanted ? file.read(m_buffer.get() + at, qint64(wanted)) : 0;
    if (got <= 0)
        return 0;
    m_unread -= quint64(got);
    return std::size_t(got);
}

/// Parses the whole lines in the buffer and moves the rest to its front. There is no line feed in the first `seen` bytes.
void UsageFile::takeLines(std::size_t seen)
{
    const char *const begin = m_buffer.get();
    const char *const last = lineBegin(begin + seen, begin + m_held);
    if (last == begin + seen)
        return;
    parseLines(begin, last);
    m_consumed += quint64(last - begin);
    m_held -= std::size_t(last - begin);
    std::memmove(m_buffer.get(), last, m_held);
}

/// Whole lines. Only those that may hold the model's usage are searched for; the text between them is never split into lines.
void UsageFile::parseLines(const char *begin, const char *end)
{
    for (;;) {
        const char *const hint = findUsageHint(begin, end);
        if (hint == end)
            return;
        const char *const last = lineEnd(hint, end);
        const char *const first = lineBegin(begin, hint);
        if (const auto line = m_parser.parse({first, std::size_t(last - first)}))
            (*m_found)(*line);
        if (last == end)
            return;
        begin = last + 1;
    }
}

/// The buffer is full of one line: reads on to its end and takes the lines that follow it in the buffer. False if the line has
/// no end yet.
bool UsageFile::readLongLine(QFile &file)
{
    char *const buffer = m_buffer.get();
    std::size_t length = 0;
    m_longLine.clear();
    m_longLine.reserve(kTooLong);
    for (std::size_t got = m_held; got; got = fill(file, 0)) {
        const char *const end = buffer + got;
        const char *const last = lineEnd(buffer, end);
        length += std::size_t(last - buffer);
        if (length < kTooLong)
            m_longLine.insert(m_longLine.end(), static_cast<const char *>(buffer), last);
        if (last == end)
            continue;
        if (length < kTooLong)
            parseLines(m_longLine.data(), m_longLine.data() + length);
        m_consumed += length + 1;
        m_held = std::size_t(end - last - 1);
        std::memmove(buffer, last + 1, m_held);
        takeLines(0);
        return true;
    }
    return false;
}

} // namespace velto
