#pragma once

#include <QList>
#include <QString>

namespace velto {

class ToolRunner;

/// Another AI tool seen running on this machine.
struct ToolProcess {
    QString name; ///< its display name, which identifies it
    QString symbol;
    int count = 0; ///< processes
    QString since; ///< elapsed time of the oldest, as `ps` prints it
    QString note; ///< one more line; may be empty

    bool operator==(const ToolProcess &) const = default;
};

/// Looks through the process table for the AI tools we know, sorted by name. Never fails: no `ps`, no tools.
/// Blocks for up to 44 seconds; never on the UI thread.
QList<ToolProcess> scanTools(ToolRunner &tools);

/// The elapsed time of `ps` in one short word: "3-04:05:06" gives "3d", "02:14:05" gives "2h", "05:32" gives "5m".
QString shortEtime(const QString &etime);

} // namespace velto
