#pragma once

#include "Platform/Timer.h"
#include "Tabs/Todos/Todo.h"
#include "Tabs/Todos/TodoTool.h"

#include <QDateTime>
#include <QObject>
#include <optional>

namespace velto {

class Background;
class Clock;
class Files;
class ToolRunner;

/// The todos that a Quillbox on this machine keeps. Its database is checked every two seconds while watched, and read in
/// the background; of several readings under way the last one to finish wins. Changes reach its tool one after the other, and
/// each is followed by a reading. UI thread.
class LocalTodos : public QObject {
    Q_OBJECT
public:
    /// All of the references outlive this.
    LocalTodos(Clock &clock, Background &background, ToolRunner &tools, const Files &files, const QString &home,
               QObject *parent = nullptr);

    /// Whether the tool can do more than mark a todo done. Determined once, when it is first asked for.
    bool canEdit() const;
    /// Why the last reading failed, as the tool says it, which may be empty; no value if it didn't.
    const std::optional<QString> &problem() const { return m_problem; }

    void setWatched(bool watched);
    /// Reads the list, whether or not the database has changed.
    void look();
    void save(const Todo &todo);
    void comment(qint64 id, const QString &text);
    void done(qint64 id);

Q_SIGNALS:
    /// The list was read.
    void replaced(const QList<velto::Todo> &todos);
    /// problem() may have changed.
    void changed();
    /// The tool refused a change, and this is the last line of what it said.
    void refused(const QString &line);

private:
    void watch();
    std::optional<QDateTime> stamp() const;
    void write(const QStringList &args);
    void startWrite();

    Clock &m_clock;
    Background &m_background;
    ToolRunner &m_tools;
    TodoTool m_tool;
    const Files &m_files;
    mutable std::optional<bool> m_canEdit; ///< nothing until it is asked for
    std::optional<QDateTime> m_stamp; ///< of the database as it was last read
    int m_readings = 0; ///< under way
    std::optional<QString> m_problem;
    QList<QStringList> m_writes; ///< what the tool is yet to be told
    bool m_writing = false;
    TimerHandle m_watch;
};

} // namespace velto
