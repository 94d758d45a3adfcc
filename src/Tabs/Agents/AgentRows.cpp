#include "Tabs/Agents/AgentRows.h"

#include "Core/Texts.h"

#include <QCoreApplication>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

QString spoken(const Agent &agent, const QDateTime &now)
{
    const QString status = agent.isWorking() ? QCoreApplication::translate("AgentRow", "working")
                                             : QCoreApplication::translate("AgentRow", "waiting for you");
    const QString start = timeAgo(startOf(agent), now);
    if (!agent.cwd)
        return QCoreApplication::translate("AgentRow", "%1, %2, started %3").arg(agent.title(), status, start);
    return QCoreApplication::translate("AgentRow", "%1, %2, in %3, started %4")
        .arg(agent.title(), status, lastPathComponent(*agent.cwd), start);
}

} // namespace

QDateTime startOf(const Agent &agent)
{
    // The number comes from outside: clamped to what a date can hold.
    constexpr double kFarthest = 8.64e15;
    return QDateTime::fromMSecsSinceEpoch(qint64(std::clamp(agent.startedAt, -kFarthest, kFarthest)), Qt::UTC);
}

QList<QByteArray> agentRoles()
{
    return {"rowId", "agentId", "title", "stateWord", "detail", "age", "folder", "working", "canResume", "spoken"};
}

RowModel::Row agentRow(const Agent &agent, const QDateTime &now)
{
    const QString age = ago(startOf(agent), now);
    return {
        (agent.isWorking() ? u'w' : u'b') + agent.id,
        agent.id,
        agent.title(),
        agent.isWorking() ? QCoreApplication::translate("AgentRow", "Thinking…")
                          : QCoreApplication::translate("AgentRow", "Waiting"),
        agent.detail.value_or(QString()),
        age,
        agent.cwd.value_or(QString()),
        agent.isWorking(),
        agent.canResume(),
        spoken(agent, now),
    };
}

QList<QByteArray> toolRoles()
{
    return {"toolName"_ba, "symbol"_ba, "countText"_ba, "since"_ba, "note"_ba};
}

RowModel::Row toolRow(const ToolProcess &tool)
{
    return {
        tool.name,
        tool.symbol,
        tool.count > 1 ? QString::number(tool.count) : QString(),
        QCoreApplication::translate("ToolRow", "running %1").arg(shortEtime(tool.since)),
        tool.note,
    };
}

} // namespace velto
