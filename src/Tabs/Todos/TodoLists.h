#pragma once

#include "Tabs/Todos/Todo.h"

#include <QSet>
#include <QStringList>
#include <optional>

namespace velto {

/// What the tab, the strip and the brief need from a list of todos. Computed in one pass; what doesn't depend on the date,
/// the filter or the search is kept until the list changes. UI thread only.
class TodoLists {
public:
    /// What is on show.
    struct Cut {
        QString scope;
        Filter filter = Filter::Today;
        QString search;
        QString today;

        bool operator==(const Cut &) const = default;
    };
    struct Group {
        QString project; ///< "other" for the todos without one
        QList<qsizetype> todos; ///< places in the list, most urgent first
    };
    struct Totals {
        int dueNow = 0; ///< in all scopes, as the next
        int overdue = 0;
        QSet<QString> scopes;
        int here = 0; ///< in the scope on show, under no filter, as the next three
        int dueHere = 0;
        int overdueHere = 0;
        int highHere = 0; ///< due and of the highest priority

        bool operator==(const Totals &) const = default;
    };
    struct Result : Totals {
        QList<Group> groups; ///< the most urgent project first
    };

    const QList<Todo> &todos() const { return m_todos; }
    void setTodos(const QList<Todo> &todos);
    Result cut(const Cut &cut);
    /// How many todos of a scope pass a filter, whatever is searched for.
    int count(const QString &scope, Filter filter, const QString &today) const;

private:
    /// What doesn't depend on the search, and what the last search found: typing on in it can only find fewer.
    struct Kept {
        Cut cut; ///< without its search
        Totals totals;
        QList<qsizetype> passed; ///< places in the scope and through the filter, most urgent first
        QString search;
        QList<qsizetype> found; ///< of those
    };

    const QList<qsizetype> &order();
    Kept pass(const Cut &cut);
    void search(const QString &search);

    QList<Todo> m_todos;
    QList<qsizetype> m_order; ///< places, most urgent first; empty until it is asked for
    std::optional<Kept> m_kept;
    QStringList m_texts; ///< what is searched, in lower case; empty until something is searched for
};

/// Whether a search finds this todo.
bool matches(const Todo &todo, const QString &search);

/// "2 due today · 1 overdue"
QString summaryText(const TodoLists::Totals &totals);

} // namespace velto
