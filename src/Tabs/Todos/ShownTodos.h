#pragma once

#include "Core/RowModel.h"
#include "Platform/Timer.h"
#include "Tabs/Todos/TodoLists.h"
#include "Tabs/Todos/TodoRows.h"

#include <QAbstractItemModel>
#include <QObject>
#include <optional>

namespace velto {

class Clock;

/// What the tab shows of the todos: cut down by scope, date and search, which row is selected and which is unfolded, and what
/// is shown for an empty list. Follows the date. UI thread only.
class ShownTodos : public QObject {
    Q_OBJECT
    /// The segments of "List": value (what chooseScope() takes), text with its count, selected.
    Q_PROPERTY(QAbstractItemModel *scopes READ scopeRows CONSTANT FINAL)
    Q_PROPERTY(bool showsScopes READ showsScopes NOTIFY changed FINAL)
    /// The segments of "Show": value (what chooseFilter() takes), text, selected.
    Q_PROPERTY(QAbstractItemModel *filters READ filterRows CONSTANT FINAL)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged FINAL)
    Q_PROPERTY(QString summary READ summary NOTIFY changed FINAL)
    /// The summary is red: something in this scope is overdue.
    Q_PROPERTY(bool summaryUrgent READ summaryUrgent NOTIFY changed FINAL)
    /// Headings and todos, see TodoRows for the roles.
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT FINAL)
    /// The place of the selected row, which is kept on screen; -1 if it isn't in the list.
    Q_PROPERTY(int selectedRow READ selectedRow NOTIFY selectionChanged FINAL)
    /// What is shown for an empty list; the text is empty if nothing is, the button's if there is no button.
    Q_PROPERTY(QString emptySymbol READ emptySymbol NOTIFY changed FINAL)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY changed FINAL)
    Q_PROPERTY(QString emptyButton READ emptyButton NOTIFY changed FINAL)
public:
    struct Group {
        QString project; ///< "other" for the todos without one
        QList<Todo> todos;
    };

    /// `clock` outlives this.
    explicit ShownTodos(Clock &clock, QObject *parent = nullptr);

    /// Shows this list. `ready` is false while the store can't be reached, so that an empty list means nothing.
    void setTodos(const QList<Todo> &todos, bool ready);
    /// Notices that the date has changed: the machine slept over midnight, or the clock was set.
    void update();

    QList<Group> groups() const;
    /// The todos of all groups, in order.
    QList<Todo> flat() const;
    int count(const QString &scope) const { return m_lists.count(scope, m_filter, m_days.today); }
    /// How many todos are due by today, and how many of them are overdue; both in all scopes.
    int dueCount() const { return m_result.dueNow; }
    int overdueCount() const { return m_result.overdue; }

    const QString &scope() const { return m_scope; }
    void setScope(const QString &scope);
    Filter filter() const { return m_filter; }
    void setFilter(Filter filter);
    const QString &search() const { return m_search; }
    void setSearch(const QString &search);
    /// Makes sure that a new todo is in sight, and selects it if it has its number.
    void reveal(const Todo &todo);

    /// The todo that the keyboard is on, if the list shows it.
    std::optional<Todo> selected() const;
    std::optional<qint64> selectedID() const { return m_selectedID; }
    void setSelectedID(std::optional<qint64> id);
    std::optional<qint64> openID() const { return m_openID; }
    void setOpenID(std::optional<qint64> id);

    QAbstractItemModel *scopeRows() { return &m_scopeRows; }
    bool showsScopes() const { return m_result.scopes.size() >= 2; }
    QAbstractItemModel *filterRows() { return &m_filterRows; }
    QString summary() const { return summaryText(m_result); }
    bool summaryUrgent() const { return m_result.overdueHere > 0; }
    QAbstractItemModel *rows() { return &m_rows; }
    int selectedRow() const { return m_selectedRow; }
    QString emptySymbol() const;
    QString emptyText() const;
    QString emptyButton() const;

    /// The tab has come into view.
    Q_INVOKABLE void appeared();
    Q_INVOKABLE void chooseScope(const QString &value);
    Q_INVOKABLE void chooseFilter(const QString &value);
    /// The button of the empty note.
    Q_INVOKABLE void pressEmptyButton();

    // By the id that a row has; a todo that is gone by now is left alone.
    /// The row or its chevron was pressed: selects it, and folds or unfolds it.
    Q_INVOKABLE void press(const QString &id);
    /// Keeps what is being typed in the comment field of a row, for the role commentText.
    Q_INVOKABLE void typeComment(const QString &id, const QString &text);
    /// The same for what was typed in an earlier run.
    void restoreComment(qint64 id, const QString &text);
    std::optional<Todo> byRow(const QString &id) const;

    /// Moves the selection, and stops at either end.
    void move(int by);
    /// Folds or unfolds the selected row.
    void toggleSelected();

Q_SIGNALS:
    /// Any of the above has changed, apart from the rows, the search and the selection.
    void changed();
    void searchChanged();
    void selectionChanged();
    /// The user moved the selection, which should come into sight.
    void selectionMoved();
    /// The comment that is being typed for this todo has changed.
    void commentTyped(const velto::Todo &todo, const QString &text);
    /// "Add one" was pressed.
    void draftWanted();

private:
    enum class Empty : quint8 { Not, NoMatch, NothingOverdue, NothingNow, NoTodos };
    /// Kept to detect whether anything has changed.
    struct Published {
        QString scope;
        Filter filter = Filter::Today;
        TodoLists::Totals totals;
        QString emptyText;

        bool operator==(const Published &) const = default;
    };

    void awaitMidnight();
    void publishSegments();
    void publishSelection();
    Empty emptiness() const;

    Clock &m_clock;
    TodoLists m_lists;
    bool m_ready = true;
    TodoLists::Result m_result;
    std::optional<TodoLists::Cut> m_cut; ///< what m_result was made for; nothing if the list has changed since
    Days m_days;
    QString m_scope = QStringLiteral("office");
    Filter m_filter = Filter::Today;
    QString m_search;
    std::optional<qint64> m_openID;
    std::optional<qint64> m_selectedID;
    int m_selectedRow = -1;
    TodoRows m_rows;
    RowModel m_scopeRows;
    RowModel m_filterRows;
    Published m_published;
    TimerHandle m_midnight;
};

} // namespace velto
