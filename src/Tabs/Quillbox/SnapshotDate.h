#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

namespace velto {

/// A moment as a snapshot of the memory hub writes it, in any of its four forms; nothing for any other text.
std::optional<QDateTime> snapshotDate(const QString &text);

} // namespace velto
