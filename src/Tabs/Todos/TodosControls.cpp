#include "Platform/FileWriter.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosSource.h"

#include <algorithm>

using namespace Qt::StringLiterals;

// What the user does to the list on show, with the pointer and with the keyboard, and the note where there is none.

namespace velto {

void TodosSource::setScope(const QString &scope)
{
    m_scope = scope;
    publish();
}

void TodosSource::setFilter(Filter filter)
{
    m_filter = filter;
    publish();
}

void TodosSource::setSearch(const QString &search)
{
    if (search == m_search)
        return;
    m_search = search;
    publish();
    Q_EMIT searchChanged();
}

void TodosSource::setOpenID(std::optional<qint64> id)
{
    m_openID = id;
    publishSelection();
}

void TodosSource::setSelectedID(std::optional<qint64> id)
{
    m_selectedID = id;
    publishSelection();
    Q_EMIT selectionMoved();
}

void TodosSource::setDraft(const std::optional<Todo> &draft)
{
    if (draft && m_form.shown() && m_form.touched()) {
        Q_EMIT m_form.titleFocusWanted();
        return;
    }
    m_draft = draft;
    const Todo *base = draft ? find(draft->id) : nullptr;
    m_draftBase = base ? std::optional(*base) : std::nullopt;
    publish();
    if (m_draft)
        m_form.open(*m_draft);
    else
        m_form.close();
}

void TodosSource::appeared()
{
    if (m_result.scopes.size() == 1)
        setScope(*m_result.scopes.begin());
}

void TodosSource::chooseScope(const QString &value)
{
    setScope(value);
}

void TodosSource::chooseFilter(const QString &value)
{
    if (const auto filter = filterFromRawValue(value))
        setFilter(*filter);
}

void TodosSource::askForSearch()
{
    ++m_focusSearch;
    Q_EMIT focusSearchChanged();
}

void TodosSource::retry()
{
    m_needs.quillbox.fetchAgain();
}

void TodosSource::dismissError()
{
    setError(std::nullopt);
}

QString TodosSource::storeNote() const
{
    const QuillboxMode &mode = m_needs.quillbox.mode();
    if (mode.isMissing()) {
        const QString problem = m_needs.writer.problem(m_native.path());
        return problem.isEmpty() ? m_needs.writer.word(m_native.path())
                                 : tr("Not saved yet. %1 Velto keeps trying.").arg(problem);
    }
    if (!mode.isLocal() || !m_dbProblem)
        return {};
    return tr("Couldn't read the todos of Quillbox (%1). This is the list as it was last read.")
        .arg(m_dbProblem->isEmpty() ? tr("no details") : *m_dbProblem);
}

QString TodosSource::storeAction() const
{
    if (storeNote().isEmpty())
        return {};
    const bool trying = m_needs.quillbox.mode().isLocal() || !m_needs.writer.problem(m_native.path()).isEmpty();
    return trying ? tr("Try again") : tr("Dismiss");
}

void TodosSource::pressStoreNote()
{
    if (m_needs.quillbox.mode().isLocal())
        readDatabase();
    else if (!m_needs.writer.problem(m_native.path()).isEmpty())
        m_needs.writer.tryAgain();
    else
        m_needs.writer.dismissWords();
}

TodosSource::Empty TodosSource::emptiness() const
{
    if (!m_result.groups.isEmpty() || state() != SourceState::ready())
        return Empty::Not;
    if (!m_search.isEmpty())
        return Empty::NoMatch;
    if (m_result.here == 0)
        return Empty::NoTodos;
    return m_filter == Filter::Overdue ? Empty::NothingOverdue : Empty::NothingNow;
}

QString TodosSource::emptySymbol() const
{
    switch (emptiness()) {
    case Empty::Not:
        return {};
    case Empty::NoMatch:
        return u"magnifyingglass"_s;
    case Empty::NothingOverdue:
    case Empty::NothingNow:
    case Empty::NoTodos:
        break;
    }
    return u"checkmark.circle"_s;
}

QString TodosSource::emptyText() const
{
    switch (emptiness()) {
    case Empty::Not:
        break;
    case Empty::NoMatch:
        return tr("Nothing matches “%1”.").arg(m_search);
    case Empty::NothingOverdue:
        return tr("Nothing overdue.");
    case Empty::NothingNow:
        return tr("Nothing due today. %1 more later.").arg(m_result.here);
    case Empty::NoTodos:
        return tr("No open todos.");
    }
    return {};
}

QString TodosSource::emptyButton() const
{
    switch (emptiness()) {
    case Empty::Not:
    case Empty::NoMatch:
        break;
    case Empty::NothingOverdue:
    case Empty::NothingNow:
        return tr("Show all");
    case Empty::NoTodos:
        return tr("Add one");
    }
    return {};
}

void TodosSource::pressEmptyButton()
{
    switch (emptiness()) {
    case Empty::NothingOverdue:
    case Empty::NothingNow:
        setFilter(Filter::All);
        break;
    case Empty::NoTodos:
        newDraft();
        break;
    case Empty::Not:
    case Empty::NoMatch:
        break;
    }
}

Todo TodosSource::emptyDraft() const
{
    Todo todo;
    todo.due = m_days.today;
    todo.scope = m_scope;
    return todo;
}

void TodosSource::newDraft()
{
    publish(); // the day may be another one
    setDraft(emptyDraft());
}

void TodosSource::press(const QString &id)
{
    if (const auto todo = byRow(id)) {
        setSelectedID(todo->id);
        toggleSelected();
    }
}

void TodosSource::edit(const QString &id)
{
    if (const auto todo = byRow(id))
        setDraft(todo);
}

void TodosSource::typeComment(const QString &id, const QString &text)
{
    if (const auto todo = byRow(id))
        m_rows.setCommentText(todo->id, text);
}

void TodosSource::addComment(const QString &id, const QString &text)
{
    if (const auto todo = byRow(id)) {
        comment(*todo, text);
        m_rows.setCommentText(todo->id, {});
    }
}

void TodosSource::finish(const QString &id)
{
    if (const auto todo = byRow(id))
        done(*todo);
}

void TodosSource::move(int by)
{
    QList<qint64> ids;
    qsizetype at = -1;
    for (const TodoLists::Group &group : std::as_const(m_result.groups)) {
        for (const qsizetype place : group.todos) {
            ids.append(todos().at(place).id);
            if (at < 0 && ids.back() == m_selectedID)
                at = ids.size() - 1;
        }
    }
    if (ids.isEmpty())
        return;
    const qsizetype last = ids.size() - 1;
    const qsizetype target = at >= 0 ? std::max<qsizetype>(at + by, 0) : by < 1 ? last : 0;
    setSelectedID(ids[std::min(target, last)]);
}

void TodosSource::toggleSelected()
{
    if (const auto todo = selected())
        setOpenID(m_openID == todo->id ? std::nullopt : std::optional(todo->id));
}

void TodosSource::finishSelected()
{
    if (const auto todo = selected()) {
        done(*todo);
        move(1);
    }
}

} // namespace velto
