#pragma once

#include <QString>
#include <QStringList>

namespace velto {

/// Starts a program that outlives us: in a session of its own, in `folder`, with nothing of ours open and its streams empty.
/// Returns at once; false if it can't be started. Safe from any thread.
bool startDetached(const QString &program, const QStringList &arguments, const QString &folder);

} // namespace velto
