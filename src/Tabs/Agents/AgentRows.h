#pragma once

#include "Core/RowModel.h"
#include "Tabs/Agents/Agent.h"
#include "Tabs/Agents/ToolProcess.h"

#include <QDateTime>

namespace velto {

/// rowId, agentId, title, stateWord, detail, age, folder, working, canResume, spoken: a session as its row shows it and as a
/// screen reader says it. Texts that a session lacks are empty. A session that starts or stops working gets another row.
QList<QByteArray> agentRoles();
RowModel::Row agentRow(const Agent &agent, const QDateTime &now);

/// toolName, symbol, countText (empty for one process), since, note.
QList<QByteArray> toolRoles();
RowModel::Row toolRow(const ToolProcess &tool);

/// When the session started.
QDateTime startOf(const Agent &agent);

} // namespace velto
