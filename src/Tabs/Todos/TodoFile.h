#pragma once

#include "Platform/FileWriter.h"
#include "Tabs/Todos/Todo.h"

#include <QByteArray>
#include <QDateTime>
#include <optional>

namespace velto {

/// The file of the todos, and what it held when it was last read or written here. A file that holds something else, because it is
/// damaged or another program changed it, is copied to a new name before it is replaced; one that can't be read, and so
/// can't be copied, isn't replaced. Used on one thread at a time.
class TodoFile {
public:
    struct Reading {
        std::optional<QList<Todo>> todos; ///< nothing if they can't be parsed
        QByteArray digest; ///< of what was read
        std::optional<FileError> error;
    };

    TodoFile(Files &files, QString path);

    Reading read() const;
    /// What another program has put there since, or that the file is missing; nothing if nobody touched it.
    std::optional<Reading> changedByOthers();
    /// Velto continues with this content.
    void accept(const QByteArray &digest) { m_known = digest; }
    FileWriter::Outcome write(const QList<Todo> &todos, const QDateTime &now);

private:
    struct Stamp {
        QDateTime modified;
        qint64 size = 0;
        bool operator==(const Stamp &) const = default;
    };
    bool keepForeign(const QDateTime &now, FileWriter::Outcome &outcome);
    QString name() const;

    Files &m_files;
    QString m_path;
    QByteArray m_known; ///< the digest of the file if no other program wrote it
    std::optional<Stamp> m_looked; ///< of the file that was found to be ours
};

} // namespace velto
