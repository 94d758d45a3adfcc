#include "Core/Texts.h"
#include "Platform/Background.h"
#include "Platform/Clock.h"
#include "Platform/ToolRunner.h"
#include "Tabs/Quillbox/QuillboxClient.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodoDates.h"
#include "Tabs/Todos/TodosSource.h"

#include <QJsonArray>
#include <QPointer>
#include <QTextBoundaryFinder>
#include <algorithm>

using namespace Qt::StringLiterals;

// Changes. Each is shown at once; a store that refuses it says so, and the list is read again.

namespace velto {

namespace {

constexpr std::chrono::seconds kToolTimeout{20};
constexpr std::chrono::seconds kUndoTime{5};

bool isBlank(const QString &text)
{
    return std::ranges::all_of(text, [](QChar c) { return c == u'\t' || c.category() == QChar::Separator_Space; });
}

/// "Ship v2.0 — now!" is "ship-v2-0-now". Counts in characters as the user sees them.
QString slugOf(const QString &title)
{
    constexpr qsizetype kLongest = 60;
    const QString text = title.toLower();
    QStringList characters;
    bool apart = false;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype from = 0, to = finder.toNextBoundary(); to >= 0; from = to, to = finder.toNextBoundary()) {
        const QString character = text.sliced(from, to - from);
        if (!QChar::isLetterOrNumber(character.toUcs4().value(0))) {
            apart = true;
            continue;
        }
        if (apart && !characters.isEmpty())
            characters.append(u"-"_s);
        apart = false;
        characters.append(character);
    }
    return characters.mid(0, kLongest).join(QString());
}

QJsonObject recordOf(const Todo &todo)
{
    const QJsonArray tags{
        u"todo"_s,
        u"status:open"_s,
        "due:"_L1 + todo.due,
        "who:"_L1 + todo.who,
        "project:"_L1 + todo.project,
        "scope:"_L1 + todo.scope,
        u"prio:%1"_s.arg(todo.prio),
    };
    return {
        {u"title"_s, todo.title}, {u"body"_s, todo.details}, {u"type"_s, u"todo"_s},
        {u"topic"_s, u"todo"_s},  {u"tags"_s, tags},         {u"filename"_s, "todo/"_L1 + slugOf(todo.title)},
    };
}

/// The next number; 1 after the last one there is.
qint64 idAfter(qint64 highest)
{
    return highest == std::numeric_limits<qint64>::max() ? 1 : highest + 1;
}

} // namespace

void TodosSource::save(const Todo &todo)
{
    if (isBlank(todo.title)) {
        setError(tr("Give the todo a title first."));
        return;
    }
    const QuillboxMode mode = m_needs.quillbox.mode();
    const Todo whole = onStanding(todo);
    Todo shown = todo;
    if (mode.isMissing())
        shown = saveNative(whole);
    else
        m_error.reset();
    setDraft(std::nullopt);
    if (todo.id == 0)
        showNew(shown);
    if (mode.isLocal())
        write(todo.id != 0 ? m_local.edit(whole) : m_local.add(whole));
    else if (mode.isHub())
        hubWrite(u"/api/write"_s, recordOf(whole));
}

// The form holds the todo as it was when it was opened. A comment, or another program, may have changed the rest since.
Todo TodosSource::onStanding(const Todo &edited) const
{
    const Todo *standing = find(edited.id);
    if (!standing && m_pendingDone && m_pendingDone->id == edited.id)
        standing = &*m_pendingDone;
    return standing && m_draftBase && m_draftBase->id == edited.id ? merged(*standing, *m_draftBase, edited) : edited;
}

// A new todo comes into sight, whatever the list was cut down to.
void TodosSource::showNew(const Todo &todo)
{
    m_scope = todo.scope;
    if (!passes(m_filter, todo, m_days.today))
        m_filter = *std::ranges::find_if(kAllFilters, [&](Filter filter) { return passes(filter, todo, m_days.today); });
    if (!matches(todo, m_search))
        setSearch({});
    publish();
    if (todo.id != 0)
        setSelectedID(todo.id);
}

Todo TodosSource::saveNative(Todo todo)
{
    QList<Todo> list = todos();
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

// The undo may still come, or the program may end before the five seconds do: until then a done todo is open in the file.
void TodosSource::keepNative()
{
    QList<Todo> list = todos();
    if (m_pendingDone && !find(m_pendingDone->id))
        list.append(*m_pendingDone);
    m_native.save(list);
}

void TodosSource::comment(const Todo &todo, const QString &text)
{
    if (isBlank(text))
        return;
    if (m_needs.quillbox.mode().isLocal()) {
        setError(std::nullopt);
        write(m_local.comment(todo.id, text));
        return;
    }
    QList<Todo> list = todos();
    const auto standing = std::ranges::find(list, todo.id, &Todo::id);
    if (!m_needs.quillbox.mode().isMissing() || standing == list.end())
        return;
    standing->comments.append({shortDateTime(m_needs.clock.wallTime()), text});
    setTodos(list);
    keepNative();
}

void TodosSource::done(const Todo &todo)
{
    commitPendingDone();
    m_pendingDone = todo;
    Q_EMIT rowAboutToMove();
    QList<Todo> list = todos();
    list.removeIf([id = todo.id](const Todo &each) { return each.id == id; });
    setTodos(list);
    publish(); // also if it was gone already
    m_doneTask = m_needs.clock.after(kUndoTime, [this] { commitPendingDone(); });
}

void TodosSource::undoDone()
{
    m_doneTask.reset();
    const auto todo = std::exchange(m_pendingDone, std::nullopt);
    Q_EMIT rowAboutToMove();
    // A reading in the meantime has brought it back already.
    if (todo && !find(todo->id))
        setTodos(todos() + QList{*todo});
    publish();
}

void TodosSource::commitPendingDone()
{
    m_doneTask.reset();
    const auto todo = std::exchange(m_pendingDone, std::nullopt);
    if (!todo)
        return;
    const QuillboxMode mode = m_needs.quillbox.mode();
    if (mode.isMissing()) {
        m_native.save(todos());
        publish();
        return;
    }
    setError(std::nullopt);
    if (mode.isLocal())
        write(m_local.done(todo->id));
    else
        hubWrite(u"/api/todo/%1/done"_s.arg(todo->id), {});
}

void TodosSource::write(const QStringList &args)
{
    m_writes.append(args);
    if (!m_writing)
        startWrite();
}

// One at a time: two changes of one todo mustn't overtake each other.
void TodosSource::startWrite()
{
    m_writing = true;
    inBackground(
        m_needs.background, this,
        [&tools = m_needs.tools, args = m_writes.takeFirst()] { return tools.run(args, {}, kToolTimeout); },
        [this](const RunResult &result) {
            m_writing = false;
            if (!m_writes.isEmpty())
                startWrite();
            if (!result.ok) {
                const QString line = lastLine(result.err);
                setError(tr("Couldn't save that change to Quillbox (%1). Your list was reloaded.")
                             .arg(line.isEmpty() ? tr("no details") : line));
            }
            refresh();
        });
}

QCoro::Task<> TodosSource::hubWrite(QString path, QJsonObject json)
{
    const QPointer<TodosSource> self(this);
    const QuillboxClient &client = m_needs.quillbox.client();
    const auto asked = client.request(path, "POST", json, client.current());
    const auto answer = co_await asked;
    if (!self)
        co_return;
    if (!answer)
        setError(answer.error().text);
    m_needs.quillbox.fetchAgain();
}

} // namespace velto
