#pragma once

#include "Platform/Timer.h"
#include "Tabs/Todos/Todo.h"

#include <optional>

namespace velto {

class Clock;
class Files;
class FileWriter;
struct Places;

/// What stands in the form, kept in a file of its own (a list as in todos.json) until it is saved or cancelled: so it outlives
/// the program. UI thread.
class KeptDraft {
public:
    struct Draft {
        Todo opened; ///< as it was when the form was opened on it; a new one has the id 0
        Todo edited;
    };

    /// All of it outlives this.
    KeptDraft(Files &files, FileWriter &writer, Clock &clock, const Places &places);

    /// What the last run left. Reads the file.
    std::optional<Draft> left();
    /// Writes within a second, so that not every key is written.
    void keep(const Draft &draft);
    void forget();

private:
    void write();

    Files &m_files;
    FileWriter &m_writer;
    Clock &m_clock;
    QString m_path;
    bool m_inFile = false;
    Draft m_newest;
    TimerHandle m_soon;
};

} // namespace velto
