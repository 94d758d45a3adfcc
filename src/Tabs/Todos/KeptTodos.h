#pragma once

#include "Tabs/Todos/Todo.h"

#include <optional>

namespace velto {

class Clock;
class Files;
class FileWriter;

/// What the user was typing, in a file of its own (a list as in todos.json), so that it outlives the program. UI thread.
class KeptTodos {
public:
    /// All of it outlives this.
    KeptTodos(Files &files, FileWriter &writer, const Clock &clock, QString path);

    /// What the last run left; empty if that was nothing, or can't be made out. Reads the file.
    QList<Todo> left();
    /// Writes within a second, so that not every key is written, and at the program's end. An empty list removes the file.
    void keep(const QList<Todo> &todos);

private:
    Files &m_files;
    FileWriter &m_writer;
    const Clock &m_clock;
    QString m_path;
    bool m_inFile = false;
};

} // namespace velto
