#pragma once

#include "Tabs/Todos/Todo.h"

#include <QByteArray>

namespace velto {

class Clock;
class Files;
struct Places;

/// The todos that Velto keeps itself, in one JSON file. A file that isn't what was last read or written here, because it is
/// damaged or another program changed it, is copied to a name of its own before it is replaced; a file that can't be read, and
/// so not be copied, isn't replaced. UI thread.
class NativeTodos {
public:
    NativeTodos(Files &files, const Clock &clock, const Places &places);

    const QString &path() const { return m_path; }
    /// The list in the file; an empty one if there is none or it makes no sense.
    QList<Todo> load();
    /// Writes the whole list; blocks until it is on the disk. If it can't be written the file stays as it is, and the next save
    /// brings everything.
    void save(const QList<Todo> &todos);
    /// The list to be saved next isn't a later state of the file: what the file holds by then is copied first.
    void forget() { m_known.clear(); }

private:
    bool keepForeign();
    bool keep(const QByteArray &bytes);

    Files &m_files;
    const Clock &m_clock;
    QString m_path;
    QByteArray m_known; ///< what the file holds if nobody else wrote it
};

/// The list as the file holds it, and back. Nothing if it isn't such a list, whole.
QByteArray encodeTodos(const QList<Todo> &todos);
std::optional<QList<Todo>> decodeTodos(const QByteArray &json);

} // namespace velto
