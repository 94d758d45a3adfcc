#include "Tabs/Todos/ShownTodos.h"

#include "Core/Texts.h"
#include "Platform/Clock.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

TodoRows::Content contentOf(const QList<Todo> &todos, const TodoLists::Result &result)
{
    TodoRows::Content content{todos, {}, {}};
    for (const TodoLists::Group &group : result.groups) {
        content.rows.append({-1, content.projects.size()});
        content.projects.append(group.project);
        for (const qsizetype place : group.todos)
            content.rows.append({place, -1});
    }
    return content;
}

} // namespace

ShownTodos::ShownTodos(Clock &clock, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
    , m_scopeRows({"value"_ba, "text"_ba, "selected"_ba})
    , m_filterRows({"value"_ba, "text"_ba, "selected"_ba})
{
    update();
    awaitMidnight();
}

void ShownTodos::setTodos(const QList<Todo> &todos, bool ready)
{
    m_ready = ready;
    if (!todos.isSharedWith(m_lists.todos())) {
        m_lists.setTodos(todos);
        m_cut.reset();
    }
    update();
}

QList<ShownTodos::Group> ShownTodos::groups() const
{
    QList<Group> groups;
    for (const TodoLists::Group &group : m_result.groups) {
        groups.append({group.project, {}});
        for (const qsizetype place : group.todos)
            groups.back().todos.append(m_lists.todos().at(place));
    }
    return groups;
}

QList<Todo> ShownTodos::flat() const
{
    QList<Todo> flat;
    for (const TodoLists::Group &group : m_result.groups) {
        for (const qsizetype place : group.todos)
            flat.append(m_lists.todos().at(place));
    }
    return flat;
}

void ShownTodos::setScope(const QString &scope)
{
    m_scope = scope;
    update();
}

void ShownTodos::setFilter(Filter filter)
{
    m_filter = filter;
    update();
}

void ShownTodos::setSearch(const QString &search)
{
    if (search == m_search)
        return;
    m_search = search;
    update();
    Q_EMIT searchChanged();
}

void ShownTodos::reveal(const Todo &todo)
{
    m_scope = todo.scope;
    if (!passes(m_filter, todo, m_days.today))
        m_filter = *std::ranges::find_if(kAllFilters, [&](Filter filter) { return passes(filter, todo, m_days.today); });
    if (!matches(todo, m_search))
        setSearch({});
    update();
    if (todo.id != 0)
        setSelectedID(todo.id);
}

std::optional<Todo> ShownTodos::selected() const
{
    if (m_selectedRow < 0)
        return std::nullopt;
    return m_lists.todos().at(m_rows.content().rows.at(m_selectedRow).todo);
}

void ShownTodos::setSelectedID(std::optional<qint64> id)
{
    m_selectedID = id;
    publishSelection();
    Q_EMIT selectionMoved();
}

void ShownTodos::setOpenID(std::optional<qint64> id)
{
    m_openID = id;
    publishSelection();
}

ShownTodos::Empty ShownTodos::emptiness() const
{
    if (!m_result.groups.isEmpty() || !m_ready)
        return Empty::Not;
    if (!m_search.isEmpty())
        return Empty::NoMatch;
    if (m_result.here == 0)
        return Empty::NoTodos;
    return m_filter == Filter::Overdue ? Empty::NothingOverdue : Empty::NothingNow;
}

QString ShownTodos::emptySymbol() const
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

QString ShownTodos::emptyText() const
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

QString ShownTodos::emptyButton() const
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

void ShownTodos::appeared()
{
    if (m_result.scopes.size() == 1)
        setScope(*m_result.scopes.begin());
}

void ShownTodos::chooseScope(const QString &value)
{
    setScope(value);
}

void ShownTodos::chooseFilter(const QString &value)
{
    if (const auto filter = filterFromRawValue(value))
        setFilter(*filter);
}

void ShownTodos::pressEmptyButton()
{
    switch (emptiness()) {
    case Empty::NothingOverdue:
    case Empty::NothingNow:
        setFilter(Filter::All);
        break;
    case Empty::NoTodos:
        Q_EMIT draftWanted();
        break;
    case Empty::Not:
    case Empty::NoMatch:
        break;
    }
}

void ShownTodos::press(const QString &id)
{
    if (const auto todo = byRow(id)) {
        setSelectedID(todo->id);
        toggleSelected();
    }
}

void ShownTodos::typeComment(const QString &id, const QString &text)
{
    if (const auto todo = byRow(id)) {
        m_rows.setCommentText(todo->id, text);
        Q_EMIT commentTyped(*todo, text);
    }
}

void ShownTodos::restoreComment(qint64 id, const QString &text)
{
    m_rows.setCommentText(id, text);
}

std::optional<Todo> ShownTodos::byRow(const QString &id) const
{
    bool isNumber = false;
    const qint64 number = id.toLongLong(&isNumber);
    const auto found = std::ranges::find(m_lists.todos(), number, &Todo::id);
    return isNumber && found != m_lists.todos().end() ? std::optional(*found) : std::nullopt;
}

void ShownTodos::move(int by)
{
    QList<qint64> ids;
    qsizetype at = -1;
    for (const TodoLists::Group &group : std::as_const(m_result.groups)) {
        for (const qsizetype place : group.todos) {
            ids.append(m_lists.todos().at(place).id);
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

void ShownTodos::toggleSelected()
{
    if (const auto todo = selected())
        setOpenID(m_openID == todo->id ? std::nullopt : std::optional(todo->id));
}

// Everything is computed here, once for each change; views only read the result.
void ShownTodos::update()
{
    const QDate day = today(m_clock);
    m_days = {textOf(day), textOf(day.addDays(1))};
    const TodoLists::Cut cut{m_scope, m_filter, m_search, m_days.today};
    if (m_cut != cut) {
        m_cut = cut;
        m_result = m_lists.cut(cut);
        m_rows.setContent(contentOf(m_lists.todos(), m_result), m_days);
        publishSegments();
    }
    publishSelection();
    const TodoLists::Totals &totals = m_result;
    Published now{m_scope, m_filter, totals, emptyText()};
    if (now == m_published)
        return;
    m_published = std::move(now);
    Q_EMIT changed();
}

void ShownTodos::publishSegments()
{
    const QString work = tr("Work %1").arg(count(u"office"_s));
    const QString personal = tr("Personal %1").arg(count(u"personal"_s));
    m_scopeRows.setRows({
        {u"office"_s, work, m_scope == "office"_L1},
        {u"personal"_s, personal, m_scope == "personal"_L1},
    });
    QList<RowModel::Row> filters;
    for (const Filter filter : kAllFilters)
        filters.append({rawValue(filter), velto::label(filter), filter == m_filter});
    m_filterRows.setRows(filters);
}

void ShownTodos::publishSelection()
{
    m_rows.setOpen(m_openID);
    m_rows.setSelected(m_selectedID);
    const int row = m_rows.placeOf(m_selectedID);
    if (std::exchange(m_selectedRow, row) != row)
        Q_EMIT selectionChanged();
}

void ShownTodos::awaitMidnight()
{
    const QDateTime now = m_clock.wallTime().toLocalTime();
    const auto left = std::chrono::milliseconds(now.msecsTo(now.date().addDays(1).startOfDay()));
    m_midnight = m_clock.after(std::max(left, std::chrono::milliseconds(1)), [this] {
        update();
        awaitMidnight();
    });
}

} // namespace velto
