#pragma once

#include "Platform/Machine.h"

namespace velto {

/// Whether any program of this machine listens there; reads /proc/net/tcp, see proc(5). Any thread.
bool portTaken(quint16 port);

/// Which of the user's own programs it is, other than this one; nothing if it is another user's. Blocks for some milliseconds;
/// any thread.
std::optional<PortHolder> portHolder(quint16 port);

} // namespace velto
