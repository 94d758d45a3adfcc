#pragma once

#include <QtGlobal>

namespace velto {

/// The socket at the other end of a TCP connection over IPv4 loopback. A peer that closed its socket and one that only finished
/// sending look the same to this end; but the system still knows the other socket, and whether a program owns it.
enum class PeerSocket : quint8 {
    Owned, ///< a program has it open
    Gone, ///< closed, reset, or its program ended
    Unknown, ///< the system doesn't tell
};

/// Asks the kernel by sock_diag(7), which looks one socket up, and reads /proc/net/tcp where that can't be had. Any thread;
/// doesn't block.
PeerSocket peerSocketOf(int socket);
/// The two ways, for tests.
PeerSocket peerSocketByDiag(int socket);
PeerSocket peerSocketByTable(int socket);

} // namespace velto
