#include "Tabs/Agents/ShownSessions.h"

#include "Core/Prefs.h"
#include "Platform/Clock.h"
#include "Tabs/Agents/AgentRows.h"

#include <algorithm>

namespace velto {

namespace {

constexpr double kStaleAfterMilliseconds = 86'400'000;

} // namespace

ShownSessions::ShownSessions(const Clock &clock, Prefs &prefs)
    : m_clock(clock)
    , m_prefs(prefs)
    , m_rows(agentRoles())
{
}

const Agent *ShownSessions::find(const QString &id) const
{
    const auto found = std::ranges::find(m_agents, id, &Agent::id);
    return found == m_agents.end() ? nullptr : &*found;
}

QList<Agent> ShownSessions::members(Group group) const
{
    const QDateTime moment = now();
    QList<Agent> result;
    std::ranges::copy_if(m_agents, std::back_inserter(result),
                         [&](const Agent &agent) { return groupOf(agent, moment) == group; });
    return result;
}

int ShownSessions::count(Group group) const
{
    const QDateTime moment = now();
    return int(std::ranges::count_if(m_agents, [&](const Agent &agent) { return groupOf(agent, moment) == group; }));
}

int ShownSessions::hidden() const
{
    const int waiting = count(Group::Waiting);
    return !m_expanded && waiting >= kFoldsFrom ? waiting - (kFoldsFrom - 1) : 0;
}

void ShownSessions::dismiss(const QString &id)
{
    m_prefs.setDismissedAgentIDs(m_prefs.dismissedAgentIDs() + QSet{id});
}

void ShownSessions::dismissWaiting()
{
    QSet<QString> ids = m_prefs.dismissedAgentIDs();
    for (const Agent &agent : members(Group::Waiting))
        ids.insert(agent.id);
    if (ids != m_prefs.dismissedAgentIDs())
        m_prefs.setDismissedAgentIDs(ids);
}

ShownSessions::Published ShownSessions::publish()
{
    const QDateTime moment = now();
    Published result{m_agents, {}, m_expanded};
    QList<RowModel::Row> running;
    QList<RowModel::Row> waiting;
    for (const Agent &agent : m_agents) {
        const Group group = groupOf(agent, moment);
        result.groups.append(group);
        if (group == Group::Running)
            running.append(agentRow(agent, moment));
        else if (group == Group::Waiting && (m_expanded || waiting.size() < kFoldsFrom))
            waiting.append(agentRow(agent, moment));
    }
    if (!m_expanded && waiting.size() == kFoldsFrom)
        waiting.removeLast();
    m_rows.setRows(running + waiting);
    return result;
}

QDateTime ShownSessions::now() const
{
    return m_clock.wallTime().toUTC();
}

ShownSessions::Group ShownSessions::groupOf(const Agent &agent, const QDateTime &now) const
{
    if (agent.isWorking())
        return Group::Running;
    const bool old = double(now.toMSecsSinceEpoch()) - agent.startedAt >= kStaleAfterMilliseconds;
    return old || m_prefs.dismissedAgentIDs().contains(agent.id) ? Group::Stale : Group::Waiting;
}

} // namespace velto
