#include "Tabs/Todos/TodoRows.h"

#include "Core/LongestRun.h"

#include <QCoreApplication>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

using Content = TodoRows::Content;

QString rowId(const Content &content, const TodoRows::Row &row)
{
    return row.isHeading() ? "project:"_L1 + content.projects[row.project]
                           : "todo:"_L1 + QString::number(content.todos[row.todo].id);
}

QVariantList commentsOf(const Todo &todo)
{
    QVariantList list;
    for (const Comment &comment : todo.comments)
        list.append(QVariantMap{{u"at"_s, comment.at}, {u"text"_s, comment.text}});
    return list;
}

} // namespace

void TodoRows::setContent(const Content &content, const Days &days)
{
    const TodoRowsChange change = changeBetween(m_content, content, days == m_days, m_open, m_selected);
    removeAllBut(change);
    m_days = days;
    reorder(adopt(content, change), change.from);
    insertNew(content, change);
    announce(change.changed);
}

void TodoRows::removeAllBut(const TodoRowsChange &change)
{
    const auto &[from, oldEnd, origins, changed] = change;
    std::vector<bool> stays(std::size_t(oldEnd - from), false);
    for (const qsizetype origin : origins) {
        if (origin >= 0)
            stays[std::size_t(origin - from)] = true;
    }
    for (qsizetype end = oldEnd; end > from;) {
        qsizetype first = end;
        while (first > from && !stays[std::size_t(first - 1 - from)])
            --first;
        if (first == end) {
            --end;
            continue;
        }
        beginRemoveRows({}, int(first), int(end - 1));
        m_content.rows.remove(first, end - first);
        endRemoveRows();
        end = first;
    }
}

/// Gives the remaining rows their new values. Returns the new positions of the middle rows, in their old order.
QList<qsizetype> TodoRows::adopt(const Content &content, const TodoRowsChange &change)
{
    const auto &[from, oldEnd, origins, changed] = change;
    QList<std::pair<qsizetype, qsizetype>> left;
    for (qsizetype i = 0; i < origins.size(); ++i) {
        if (origins[i] >= 0)
            left.append({origins[i], i});
    }
    std::ranges::sort(left);
    QList<qsizetype> current;
    for (const auto &[old, now] : left)
        current.append(now);

    QList<Row> rows = content.rows.first(from);
    for (const qsizetype now : current)
        rows.append(content.rows[from + now]);
    rows += content.rows.sliced(from + origins.size());
    m_content = {content.todos, content.projects, rows};
    return current;
}

void TodoRows::reorder(QList<qsizetype> current, qsizetype from)
{
    const std::vector<bool> stays = longestIncreasing(current);
    QList<qsizetype> moving;
    for (qsizetype i = 0; i < current.size(); ++i) {
        if (!stays[std::size_t(i)])
            moving.append(current[i]);
    }
    QList<qsizetype> target = current;
    std::ranges::sort(target);
    std::ranges::sort(moving);
    for (const qsizetype row : moving) {
        // All that precedes it in the target is in order already, so its place is right behind its predecessor.
        const auto place = std::ranges::lower_bound(target, row);
        const qsizetype to = place == target.begin() ? 0 : current.indexOf(*std::prev(place)) + 1;
        const qsizetype at = current.indexOf(row);
        if (!beginMoveRows({}, int(from + at), int(from + at), {}, int(from + to)))
            continue; // already in place
        const qsizetype landing = to > at ? to - 1 : to;
        m_content.rows.move(from + at, from + landing);
        current.move(at, landing);
        endMoveRows();
    }
}

void TodoRows::insertNew(const Content &content, const TodoRowsChange &change)
{
    const auto &[from, oldEnd, origins, changed] = change;
    for (qsizetype i = 0; i < origins.size();) {
        qsizetype end = i;
        while (end < origins.size() && origins[end] < 0)
            ++end;
        if (end > i) {
            beginInsertRows({}, int(from + i), int(from + end - 1));
            m_content.rows.insert(from + i, end - i, {});
            std::copy(content.rows.begin() + from + i, content.rows.begin() + from + end, m_content.rows.begin() + from + i);
            endInsertRows();
        }
        i = end + 1;
    }
}

void TodoRows::announce(const std::vector<bool> &changed)
{
    for (std::size_t i = 0; i < changed.size();) {
        std::size_t end = i;
        while (end < changed.size() && changed[end])
            ++end;
        if (end > i)
            Q_EMIT dataChanged(index(int(i)), index(int(end - 1)));
        i = end + 1;
    }
}

void TodoRows::mark(std::optional<qint64> &held, std::optional<qint64> id, const QList<int> &roles)
{
    if (held == id)
        return;
    const auto before = std::exchange(held, id);
    for (qsizetype i = 0; i < m_content.rows.size(); ++i) {
        const Row &row = m_content.rows[i];
        if (row.isHeading())
            continue;
        const qint64 todo = m_content.todos[row.todo].id;
        if (todo == before || todo == id)
            Q_EMIT dataChanged(index(int(i)), index(int(i)), roles);
    }
}

void TodoRows::setCommentText(qint64 id, const QString &text)
{
    if (text.isEmpty())
        m_typed.remove(id);
    else
        m_typed.insert(id, text);
    // The field it was typed into has it already; only an empty text has to clear the field.
    if (const int place = placeOf(id); place >= 0 && text.isEmpty())
        Q_EMIT dataChanged(index(place), index(place), {CommentText});
}

int TodoRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_content.rows.size());
}

QVariant TodoRows::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role < RowId)
        return {};
    const Row &row = m_content.rows[index.row()];
    if (role == RowId)
        return rowId(m_content, row);
    if (role == IsHeading)
        return row.isHeading();
    if (!row.isHeading())
        return todoData(m_content.todos[row.todo], role);
    const QString &project = m_content.projects[row.project];
    const QString heading = project == "other"_L1 ? QCoreApplication::translate("TodosView", "No project") : project;
    switch (role) {
    case Title:
    case Spoken:
        return heading;
    case HighPriority:
    case Overdue:
    case Open:
    case Selected:
        return false;
    case Comments:
        return QVariantList();
    default:
        return QString();
    }
}

QVariant TodoRows::todoData(const Todo &todo, int role) const
{
    switch (role) {
    case TodoId:
        return QString::number(todo.id);
    case Title:
        return todo.title;
    case PrioritySymbol:
        return todo.prio == 1 ? u"exclamationmark.2"_s : todo.prio == 3 ? u"arrow.down"_s : QString();
    case HighPriority:
        return todo.prio == 1;
    case DueText:
        return dueText(todo, m_days);
    case DueSymbol:
        return todo.overdue(m_days.today) ? u"exclamationmark.circle"_s : u"calendar"_s;
    case Overdue:
        return todo.overdue(m_days.today);
    case Person:
        return personText(todo);
    case CommentCount:
        return todo.comments.isEmpty() ? QString() : QString::number(todo.comments.size());
    case Spoken:
        return accessibleSummary(todo, m_days);
    case Open:
        return todo.id == m_open;
    case Selected:
        return todo.id == m_selected;
    case Details:
        return todo.id == m_open ? todo.details : QString();
    case Comments:
        return todo.id == m_open ? commentsOf(todo) : QVariantList();
    case CommentText:
        return m_typed.value(todo.id);
    default:
        return {};
    }
}

QHash<int, QByteArray> TodoRows::roleNames() const
{
    return {
        {RowId, "rowId"},
        {IsHeading, "isHeading"},
        {TodoId, "todoId"},
        {Title, "title"},
        {PrioritySymbol, "prioritySymbol"},
        {HighPriority, "highPriority"},
        {DueText, "dueText"},
        {DueSymbol, "dueSymbol"},
        {Overdue, "overdue"},
        {Person, "person"},
        {CommentCount, "commentCount"},
        {Spoken, "spoken"},
        {Open, "open"},
        {Selected, "selected"},
        {Details, "details"},
        {Comments, "comments"},
        {CommentText, "commentText"},
    };
}

} // namespace velto
