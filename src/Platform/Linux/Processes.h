#pragma once

#include <QtGlobal>
#include <functional>

class QObject;

namespace velto {

/// Whether a process of that id runs; a zombie doesn't. Any thread.
bool processLives(qint64 pid);

/// Calls `ended` once on this thread when that process has ended, unless `context` is gone by then; at once if it has.
void whenProcessEnds(qint64 pid, QObject *context, std::function<void()> ended);

} // namespace velto
