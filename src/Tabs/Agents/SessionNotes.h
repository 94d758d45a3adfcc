#pragma once

#include "Platform/FileTree.h"

#include <QHash>
#include <QList>
#include <QString>

namespace velto {

class Files;
class Machine;

/// What a session does, by the note that Claude Code keeps of each that lives: `~/.claude/sessions/PID.json`, seen in 2.1.197.
/// The listing (`claude agents --json`) is made of these notes, but costs up to a second of a core.
struct SessionStatus {
    QString session;
    bool waits = false; ///< for the user's answer
    qint64 since = 0; ///< milliseconds since 1970-01-01 UTC

    bool operator==(const SessionStatus &) const = default;
};

/// The notes of all sessions whose process runs. Reads what has changed since the last time; blocks. Any thread, one at a time.
class SessionNotes {
public:
    SessionNotes(const FileTree &tree, const Files &files, const Machine &machine, QString folder);

    QList<SessionStatus> read();

private:
    struct Note {
        qint64 modified = 0;
        qint64 pid = 0;
        SessionStatus status;
    };
    const FileTree &m_tree;
    const Files &m_files;
    const Machine &m_machine;
    QString m_folder;
    QHash<QString, Note> m_notes; ///< by path
};

} // namespace velto
