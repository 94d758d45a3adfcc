#pragma once

#include <QString>
#include <QStringList>

namespace velto {

/// Starts a program that outlives us: in its own session, in `folder`, with none of our descriptors and with empty streams.
/// Returns at once; false if it can't be started. Safe from any thread.
bool startDetached(const QString &program, const QStringList &arguments, const QString &folder);

} // namespace velto
