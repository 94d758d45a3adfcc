#pragma once

#include "Feeds/Usage/TokenUsage.h"

#include <QDateTime>
#include <QString>
#include <optional>

namespace velto {

/// What counts against a daily budget: everything but what was re-read from the cache.
qint64 budgeted(const TokenUsage &usage);
/// How the day's budget will fare, in a sentence. Nothing without a budget (0) or before anything was counted.
std::optional<QString> pace(const TokenUsage &usage, qint64 budget, const QDateTime &now);
/// "Good morning." and so on, by the local hour.
QString greeting(const QDateTime &now);

} // namespace velto
