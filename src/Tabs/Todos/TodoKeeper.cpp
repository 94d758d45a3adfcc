#include "Tabs/Todos/TodoKeeper.h"

#include "Platform/Clock.h"
#include "Platform/FileWriter.h"
#include "Platform/Places.h"
#include "Tabs/Quillbox/QuillboxClient.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/HubTodos.h"
#include "Tabs/Todos/TodoDates.h"

#include <QPointer>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kUndoTime{5};

bool isBlank(const QString &text)
{
    return std::ranges::all_of(text, [](QChar c) { return c == u'\t' || c.category() == QChar::Separator_Space; });
}

/// The next id; 1 after the largest one there is.
qint64 idAfter(qint64 highest)
{
    return highest == std::numeric_limits<qint64>::max() ? 1 : highest + 1;
}

} // namespace

TodoKeeper::TodoKeeper(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
    , m_mode(needs.quillbox.mode())
    , m_native(needs.files, needs.writer, needs.clock, needs.places)
    , m_local(needs.clock, needs.background, needs.tools, needs.files, needs.places.home)
{
    connect(&m_needs.quillbox, &QuillboxSource::snapshotTaken, this, &TodoKeeper::takeSnapshot);
    connect(&m_needs.quillbox, &VeltoSource::changed, this, &TodoKeeper::followStore);
    connect(&m_needs.writer, &FileWriter::changed, this, &TodoKeeper::changed);
    connect(&m_native, &NativeTodos::replaced, this, &TodoKeeper::takeFile);
    connect(&m_native, &NativeTodos::disappeared, this, &TodoKeeper::keepNative);
    connect(&m_local, &LocalTodos::replaced, this, &TodoKeeper::takeDatabase);
    connect(&m_local, &LocalTodos::changed, this, &TodoKeeper::changed);
    connect(&m_local, &LocalTodos::refused, this, [this](const QString &line) {
        setError(tr("Couldn't save that change to Quillbox (%1). Your list was reloaded.")
                     .arg(line.isEmpty() ? tr("no details") : line));
    });
    if (m_mode.isMissing())
        m_todos = m_native.load();
    takeSnapshot();
}

TodoKeeper::~TodoKeeper() = default;

const Todo *TodoKeeper::find(qint64 id) const
{
    const auto found = std::ranges::find(m_todos, id, &Todo::id);
    return found == m_todos.end() ? nullptr : &*found;
}

const Todo *TodoKeeper::standing(qint64 id) const
{
    const Todo *todo = find(id);
    return !todo && m_pendingDone && m_pendingDone->id == id ? &*m_pendingDone : todo;
}

SourceState TodoKeeper::state() const
{
    return m_mode.isHub() ? m_needs.quillbox.state() : SourceState::ready();
}

QString TodoKeeper::label() const
{
    return m_mode.isMissing() ? tr("Kept in Velto on this Mac.") : m_needs.quillbox.modeLabel();
}

bool TodoKeeper::canEdit() const
{
    return m_mode.isMissing() || (m_mode.isLocal() && m_local.canEdit());
}

bool TodoKeeper::canAdd() const
{
    return !m_mode.isLocal() || m_local.canEdit();
}

void TodoKeeper::dismissError()
{
    setError({});
}

QString TodoKeeper::note() const
{
    if (m_mode.isMissing()) {
        const QString problem = m_needs.writer.problem(m_native.path());
        return problem.isEmpty() ? m_needs.writer.word(m_native.path())
                                 : tr("Not saved yet. %1 Velto keeps trying.").arg(problem);
    }
    if (!m_mode.isLocal() || !m_local.problem())
        return {};
    return tr("Couldn't read the todos of Quillbox (%1). This is the list as it was last read.")
        .arg(m_local.problem()->isEmpty() ? tr("no details") : *m_local.problem());
}

QString TodoKeeper::noteAction() const
{
    if (note().isEmpty())
        return {};
    const bool trying = m_mode.isLocal() || !m_needs.writer.problem(m_native.path()).isEmpty();
    return trying ? tr("Try again") : tr("Dismiss");
}

void TodoKeeper::pressNote()
{
    if (m_mode.isLocal())
        m_local.look();
    else if (!m_needs.writer.problem(m_native.path()).isEmpty())
        m_needs.writer.tryAgain();
    else
        m_needs.writer.dismissWords();
}

void TodoKeeper::refresh()
{
    if (m_mode.isLocal())
        m_local.look();
    else if (m_mode.isMissing())
        m_native.look();
}

// A pending "done" goes to the store that it was taken from, before the list becomes another store's. From then on, saving the
// list to Velto's own file keeps a copy of the file first.
void TodoKeeper::followStore()
{
    if (m_mode != m_needs.quillbox.mode()) {
        commitPendingDone();
        const QuillboxMode left = std::exchange(m_mode, m_needs.quillbox.mode());
        if (left.isMissing())
            m_native.forget();
    }
    m_local.setWatched(m_mode.isLocal());
    Q_EMIT changed();
}

void TodoKeeper::takeSnapshot()
{
    followStore();
    if (m_mode.isHub())
        setTodos(todosOf(m_needs.quillbox.snapshot()));
}

void TodoKeeper::takeFile(QList<Todo> todos)
{
    if (!m_mode.isMissing())
        return;
    // A pending "done" is still open in the file.
    if (m_pendingDone)
        todos.removeIf([id = m_pendingDone->id](const Todo &each) { return each.id == id; });
    setTodos(todos);
}

void TodoKeeper::takeDatabase(const QList<Todo> &todos)
{
    if (m_mode.isLocal())
        setTodos(todos);
}

void TodoKeeper::setTodos(const QList<Todo> &todos)
{
    if (todos == m_todos)
        return;
    m_todos = todos;
    Q_EMIT changed();
}

void TodoKeeper::setError(const QString &error)
{
    m_error = error;
    Q_EMIT changed();
}

std::optional<Todo> TodoKeeper::save(const Todo &todo)
{
    if (isBlank(todo.title)) {
        setError(tr("Give the todo a title first."));
        return std::nullopt;
    }
    if (m_mode.isMissing())
        return saveNative(todo);
    setError({});
    if (m_mode.isLocal())
        m_local.save(todo);
    else
        tellHub(hubSave(todo));
    return todo;
}

Todo TodoKeeper::saveNative(Todo todo)
{
    QList<Todo> list = m_todos;
    if (todo.id == 0) {
        todo.comments.clear();
        qint64 highest = m_pendingDone ? m_pendingDone->id : 0;
        for (const Todo &each : std::as_const(list))
            highest = std::max(highest, each.id);
        todo.id = idAfter(highest);
        while (find(todo.id))
            todo.id = idAfter(todo.id);
    }
    if (const auto standing = std::ranges::find(list, todo.id, &Todo::id); standing != list.end())
        *standing = todo;
    else
        list.append(todo);
    setTodos(list);
    keepNative();
    return todo;
}

// The undo may still come, or the program may end within the five seconds; until they are over, a done todo stays open in the
// file.
void TodoKeeper::keepNative()
{
    QList<Todo> list = m_todos;
    if (m_pendingDone && !find(m_pendingDone->id))
        list.append(*m_pendingDone);
    m_native.save(list);
}

void TodoKeeper::comment(const Todo &todo, const QString &text)
{
    if (isBlank(text))
        return;
    if (m_mode.isLocal()) {
        setError({});
        m_local.comment(todo.id, text);
        return;
    }
    QList<Todo> list = m_todos;
    const auto standing = std::ranges::find(list, todo.id, &Todo::id);
    if (!m_mode.isMissing() || standing == list.end())
        return;
    standing->comments.append({shortDateTime(m_needs.clock.wallTime()), text});
    setTodos(list);
    keepNative();
}

void TodoKeeper::done(const Todo &todo)
{
    commitPendingDone();
    m_pendingDone = todo;
    m_undoTime = m_needs.clock.after(kUndoTime, [this] { commitPendingDone(); });
    QList<Todo> list = m_todos;
    list.removeIf([id = todo.id](const Todo &each) { return each.id == id; });
    setTodos(list);
    Q_EMIT changed(); // even if the todo was gone already
}

void TodoKeeper::undoDone()
{
    m_undoTime.reset();
    const auto todo = std::exchange(m_pendingDone, std::nullopt);
    // A reading in between may have brought it back already.
    if (todo && !find(todo->id))
        setTodos(m_todos + QList{*todo});
    Q_EMIT changed();
}

void TodoKeeper::commitPendingDone()
{
    m_undoTime.reset();
    const auto todo = std::exchange(m_pendingDone, std::nullopt);
    if (!todo)
        return;
    if (m_mode.isMissing()) {
        m_native.save(m_todos);
        Q_EMIT changed();
        return;
    }
    setError({});
    if (m_mode.isLocal())
        m_local.done(todo->id);
    else
        tellHub(hubDone(todo->id));
}

QCoro::Task<> TodoKeeper::tellHub(HubCall call)
{
    const QPointer<TodoKeeper> self(this);
    const auto asked = m_needs.quillbox.client().request(call.path, "POST", call.body, m_mode);
    const auto answer = co_await asked;
    if (!self)
        co_return;
    if (!answer)
        setError(answer.error().text);
    m_needs.quillbox.fetchAgain();
}

} // namespace velto
