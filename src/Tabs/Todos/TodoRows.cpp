#include "Tabs/Todos/TodoRows.h"

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
    // The field that it was typed in has it already; an empty one is to be emptied.
    if (const int place = placeOf(id); place >= 0 && text.isEmpty())
        Q_EMIT dataChanged(index(place), index(place), {CommentText});
}

int TodoRows::placeOf(std::optional<qint64> id) const
{
    const auto found = std::ranges::find_if(
        m_content.rows, [&](const Row &row) { return id && !row.isHeading() && m_content.todos[row.todo].id == *id; });
    return found == m_content.rows.end() ? -1 : int(found - m_content.rows.begin());
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
