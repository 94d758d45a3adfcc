#pragma once

#include "Tabs/Todos/Todo.h"
#include "Tabs/Todos/TodoRowsChange.h"
#include "Tabs/Todos/TodoTexts.h"

#include <QAbstractListModel>
#include <QHash>
#include <optional>
#include <vector>

namespace velto {

/// The list as the tab shows it: the heading of each project and its todos, in one flat list. Rows keep their identity, by id,
/// across a refresh, so that typed text and the focus stay. Texts are made when a row asks for them, which only
/// the rows on screen do. UI thread only.
class TodoRows final : public QAbstractListModel {
    Q_OBJECT
public:
    /// In QML by the names behind them; all of them are set in every row, and empty where they don't apply.
    enum Role : int {
        RowId = Qt::UserRole, ///< rowId: text, unique among the rows
        IsHeading, ///< isHeading: a project's heading, which has a title and nothing else
        TodoId, ///< todoId: text, what the calls of TodosSource take
        Title, ///< title
        PrioritySymbol, ///< prioritySymbol: a symbol's name, or empty
        HighPriority, ///< highPriority: the symbol is orange and the title semibold
        DueText, ///< dueText: the text of the date's chip, or empty
        DueSymbol, ///< dueSymbol
        Overdue, ///< overdue: the date's chip is red
        Person, ///< person: the text of the person's chip, or empty
        CommentCount, ///< commentCount: the text of the comments' chip, or empty
        Spoken, ///< spoken: the row in one sentence
        Open, ///< open: the row is unfolded
        Selected, ///< selected: the keyboard is on it
        Details, ///< details: of an open row; else empty
        Comments, ///< comments: of an open row, a list of {at, text}; else empty
        CommentText, ///< commentText: what was typed in the row's comment field so far
    };

    using Content = TodoContent;
    using Row = TodoContent::Row;

    using QAbstractListModel::QAbstractListModel;

    /// Not to be called from a slot on this model's own signals.
    void setContent(const Content &content, const Days &days);
    void setOpen(std::optional<qint64> id) { mark(m_open, id, {Open, Details, Comments}); }
    void setSelected(std::optional<qint64> id) { mark(m_selected, id, {Selected}); }
    /// Keeps what the user is typing, for a row that is scrolled away and comes back.
    void setCommentText(qint64 id, const QString &text);
    const Content &content() const { return m_content; }
    /// The place of a todo's row; -1 if it has none.
    int placeOf(std::optional<qint64> id) const { return m_content.placeOf(id); }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    void removeAllBut(const TodoRowsChange &change);
    QList<qsizetype> adopt(const Content &content, const TodoRowsChange &change);
    void reorder(QList<qsizetype> current, qsizetype from);
    void insertNew(const Content &content, const TodoRowsChange &change);
    void announce(const std::vector<bool> &changed);
    QVariant todoData(const Todo &todo, int role) const;
    void mark(std::optional<qint64> &held, std::optional<qint64> id, const QList<int> &roles);

    Content m_content;
    Days m_days;
    std::optional<qint64> m_open;
    std::optional<qint64> m_selected;
    QHash<qint64, QString> m_typed;
};

} // namespace velto
