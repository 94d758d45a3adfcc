#pragma once

#include "Tabs/Todos/Todo.h"

#include <QList>
#include <QStringList>
#include <optional>
#include <vector>

namespace velto {

/// A list of todos as rows: the heading of each project, and its todos.
struct TodoContent {
    struct Row {
        qsizetype todo = -1; ///< a place in todos; -1 for a heading
        qsizetype project = -1; ///< a place in projects; -1 for a todo

        bool isHeading() const { return todo < 0; }
    };

    QList<Todo> todos;
    QStringList projects;
    QList<Row> rows;

    /// The row of a todo; -1 if it has none.
    int placeOf(std::optional<qint64> id) const;
};

/// What leads from one list of rows to the next: remove what went, move what is out of order, insert what came, announce what
/// changed. For lists of many thousands, what both begin and end with is left out of the comparison; and where a step for each
/// difference would be too many for a view, as with another filter, the rows are exchanged as a block.
struct TodoRowsChange {
    qsizetype from = 0; ///< the first row that isn't the same in both
    qsizetype oldEnd = 0; ///< in the old list, the first row of the common end
    QList<qsizetype> origins; ///< for each new row between the two, the old row that it was; -1 if it is new
    std::vector<bool> changed; ///< of all new rows, those that were there before and say something else now
};

/// Where the rows are exchanged as a block, the todo that the user has open, or else the selected one, keeps its row. Without
/// `sameDay` every todo that stays counts as changed.
TodoRowsChange changeBetween(const TodoContent &old, const TodoContent &now, bool sameDay, std::optional<qint64> open,
                             std::optional<qint64> selected);

} // namespace velto
