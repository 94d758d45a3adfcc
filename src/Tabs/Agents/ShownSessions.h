#pragma once

#include "Core/RowModel.h"
#include "Tabs/Agents/Agent.h"

#include <QAbstractItemModel>
#include <QList>

namespace velto {

class Clock;
class Prefs;

/// The sessions as the tab shows them: those that work, those that wait for the user, and the stale ones, which it only counts. A
/// session is stale a day after its start, or once the user has dismissed it; one that works never is. UI thread only.
class ShownSessions {
public:
    enum class Group : quint8 { Running, Waiting, Stale };
    /// What a view sees of the list apart from the ages in its rows; compared to tell whether anything has changed.
    struct Published {
        QList<Agent> agents;
        QList<Group> groups;
        bool expanded = false;

        bool operator==(const Published &) const = default;
    };
    /// A list of at least this many waiting sessions folds, and then shows one fewer.
    static constexpr int kFoldsFrom = 7;

    /// Both outlive this.
    ShownSessions(const Clock &clock, Prefs &prefs);

    const QList<Agent> &all() const { return m_agents; }
    void set(const QList<Agent> &agents) { m_agents = agents; }
    const Agent *find(const QString &id) const;
    QList<Agent> members(Group group) const;
    int count(Group group) const;

    bool folds() const { return count(Group::Waiting) >= kFoldsFrom; }
    bool expanded() const { return m_expanded; }
    void setExpanded(bool expanded) { m_expanded = expanded; }
    /// How many waiting sessions a folded list leaves out.
    int hidden() const;

    void dismiss(const QString &id);
    void dismissWaiting();

    QAbstractItemModel *rows() { return &m_rows; }
    /// Brings the rows up to date, and returns what they were made from.
    Published publish();

private:
    /// Now, in UTC: a local time asks the system for its zone whenever it's compared.
    QDateTime now() const;
    Group groupOf(const Agent &agent, const QDateTime &now) const;

    const Clock &m_clock;
    Prefs &m_prefs;
    QList<Agent> m_agents;
    bool m_expanded = false;
    RowModel m_rows;
};

} // namespace velto
