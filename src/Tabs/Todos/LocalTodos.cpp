#include "Tabs/Todos/LocalTodos.h"

#include "Core/Texts.h"
#include "Platform/Background.h"
#include "Platform/Clock.h"
#include "Platform/ToolRunner.h"

#include <QFileInfo>

namespace velto {

namespace {

constexpr std::chrono::seconds kWatchInterval{2};
constexpr std::chrono::seconds kToolTimeout{20};

} // namespace

LocalTodos::LocalTodos(Clock &clock, Background &background, ToolRunner &tools, const Files &files, const QString &home,
                       QObject *parent)
    : QObject(parent)
    , m_clock(clock)
    , m_background(background)
    , m_tools(tools)
    , m_tool(home)
    , m_files(files)
{
}

bool LocalTodos::canEdit() const
{
    if (!m_canEdit)
        m_canEdit = m_tool.patched(m_files);
    return *m_canEdit;
}

void LocalTodos::setWatched(bool watched)
{
    if (!watched)
        m_watch.reset();
    else if (!m_watch)
        m_watch = m_clock.every(kWatchInterval, [this] { watch(); });
}

void LocalTodos::watch()
{
    // A reading that failed keeps the old stamp, and so is tried again.
    if (m_readings == 0 && stamp() != m_stamp)
        look();
}

std::optional<QDateTime> LocalTodos::stamp() const
{
    const QFileInfo database(m_tool.database);
    return database.exists() ? std::optional(database.lastModified()) : std::nullopt;
}

void LocalTodos::look()
{
    ++m_readings;
    inBackground(
        m_background, this, [&tools = m_tools, database = m_tool.database] { return loadTodos(tools, database); },
        [this, stamp = stamp()](const LocalReading &reading) {
            --m_readings;
            m_problem = reading.todos ? std::nullopt : std::optional(reading.problem);
            if (reading.todos) {
                m_stamp = stamp;
                Q_EMIT replaced(*reading.todos);
            }
            Q_EMIT changed();
        });
}

void LocalTodos::save(const Todo &todo)
{
    write(todo.id != 0 ? m_tool.edit(todo) : m_tool.add(todo));
}

void LocalTodos::comment(qint64 id, const QString &text)
{
    write(m_tool.comment(id, text));
}

void LocalTodos::done(qint64 id)
{
    write(m_tool.done(id));
}

void LocalTodos::write(const QStringList &args)
{
    m_writes.append(args);
    if (!m_writing)
        startWrite();
}

// One at a time: two changes to a todo must not overtake each other.
void LocalTodos::startWrite()
{
    m_writing = true;
    inBackground(
        m_background, this, [&tools = m_tools, args = m_writes.takeFirst()] { return tools.run(args, {}, kToolTimeout); },
        [this](const RunResult &result) {
            m_writing = false;
            if (!m_writes.isEmpty())
                startWrite();
            if (!result.ok)
                Q_EMIT refused(lastLine(result.err));
            if (m_watch)
                look();
        });
}

} // namespace velto
