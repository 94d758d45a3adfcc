#pragma once

#include "Feeds/Usage/TokenUsage.h"

#include <atomic>
#include <mutex>
#include <string>
#include <unordered_map>

namespace velto {

class FileTree;

/// The folder in which Claude Code writes its logs, one folder for each project in it.
QString claudeLogs(const QString &home);

/// Adds up the tokens of a day from the logs of Claude Code. They grow by many megabytes a day: a file that wasn't touched today
/// is never opened, and of the others only what was added since the last reading is read. Nothing is kept but the sums and how
/// far each file was read.
///
/// Any thread; one reading at a time. A reading blocks for the disk, so it belongs in the background. It never fails: what
/// can't be read or isn't understood is skipped.
class UsageReader {
public:
    UsageReader(const FileTree &tree, QString logs);

    /// The sums of the day that `now` belongs to, in the local time zone, by the current logs.
    TokenUsage read(const QDateTime &now);
    /// Ends a reading under way, and every later one, early: the program is ending. Any thread.
    void stop() { m_stopped = true; }

private:
    const FileTree &m_tree;
    const QString m_logs;
    std::atomic_bool m_stopped = false;
    std::mutex m_lock; ///< guards what follows
    std::unordered_map<std::string, quint64> m_offsets; ///< by full path: how far a file was read today
    QDate m_day; ///< what the sums belong to
    TokenUsage m_usage;
};

} // namespace velto
