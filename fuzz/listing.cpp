// Any output of `claude agents --json`: the listing is read or refused, and each session that is read can be shown.

#include "Core/TerminalApp.h"
#include "Tabs/Agents/AgentRows.h"

#include <QDateTime>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto agents = velto::parseAgents({data, qsizetype(size)});
    if (!agents)
        return 0;
    const QDateTime now = QDateTime::fromMSecsSinceEpoch(1'795'226'514'492, Qt::UTC);
    for (const velto::Agent &agent : *agents) {
        const velto::RowModel::Row row = velto::agentRow(agent, now);
        if (row.size() != velto::agentRoles().size() || row.at(1).toString() != agent.id)
            std::abort();
        if (agent.canResume() && velto::shellQuoted(*agent.sessionId).size() != agent.sessionId->size() + 2)
            std::abort();
    }
    return 0;
}
