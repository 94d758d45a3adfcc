#pragma once

#include "Platform/Machine.h"

namespace velto {

/// Whether any program of this machine listens there; reads /proc/net/tcp, see proc(5). Any thread.
bool portTaken(quint16 port);

/// Which of the user's own programs it is, other than this one; nothing if it is another user's. Blocks for some milliseconds;
/// any thread.
std::optional<PortHolder> portHolder(quint16 port);

/// Whether a process of that id runs; one that has ended and waits for its parent does not. Any thread.
bool processLives(qint64 pid);

/// Calls `ended` once on this thread when that process has ended, unless `context` is gone by then; at once if it has.
void whenProcessEnds(qint64 pid, QObject *context, std::function<void()> ended);

} // namespace velto
