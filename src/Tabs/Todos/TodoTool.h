#pragma once

#include "Tabs/Todos/Todo.h"

#include <QByteArray>
#include <QStringList>

namespace velto {

class Files;
class ToolRunner;

/// A Quillbox on this machine: the database that `sqlite3` reads the todos from, and the tool that changes them.
struct TodoTool {
    QString database;
    QString todoScript;

    explicit TodoTool(const QString &home);

    /// The arguments that change a todo, as `run` takes them.
    QStringList add(const Todo &todo) const;
    QStringList edit(const Todo &todo) const;
    QStringList done(qint64 id) const;
    QStringList comment(qint64 id, const QString &text) const;
    /// Whether the tool can do more than mark a todo done.
    bool patched(const Files &files) const;
};

struct LocalReading {
    std::optional<QList<Todo>> todos; ///< nothing if the database can't be read now, perhaps because it is locked
    QString problem; ///< why, as the tool says it; may be empty
};
/// The open todos of the database at this path; none if there is no such file. Blocks. Any thread.
LocalReading loadTodos(ToolRunner &tools, const QString &database);
/// The same, from what `sqlite3 -json` printed; entries that make no sense are left out.
QList<Todo> parseTodos(const QByteArray &json);

} // namespace velto
