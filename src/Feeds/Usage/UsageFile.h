#pragma once

#include "Feeds/Usage/UsageLine.h"

#include <atomic>
#include <functional>
#include <string>
#include <vector>

class QFile;

namespace velto {

/// Reads what was added to log files, through one buffer for all of them: its memory grows neither with
/// a file nor, beyond the longest line that is parsed, with a line. One thread at a time; blocks for the disk.
class UsageFile {
public:
    /// A line of this many bytes, or more, is skipped.
    static constexpr std::size_t kTooLong = 2'000'000;
    using Found = std::function<void(const UsageLine &)>;

    /// Gives up between two buffers once `stopped` is true.
    explicit UsageFile(const std::atomic_bool &stopped);

    /// Calls `found` for each line of the model between the offsets `begin` and `end` of the file that ends there with a line
    /// feed. Returns the offset after the last line feed, where the next reading goes on; `begin` if there is none or the file
    /// can't be read.
    quint64 read(const QString &path, quint64 begin, quint64 end, const Found &found);

private:
    std::size_t fill(QFile &file, std::size_t at);
    void takeLines(std::size_t seen);
    void parseLines(const char *begin, const char *end);
    bool readLongLine(QFile &file);

    const std::atomic_bool &m_stopped;
    const Found *m_found = nullptr;
    UsageLineParser m_parser;
    std::unique_ptr<char[]> m_buffer;
    std::vector<char> m_longLine; ///< a line that is longer than the buffer, as far as it is worth keeping
    std::size_t m_held = 0; ///< bytes at the front of the buffer: the beginning of a line whose end wasn't seen yet
    quint64 m_unread = 0; ///< bytes up to the end that was asked for
    quint64 m_consumed = 0; ///< the offset after the last whole line
};

} // namespace velto
