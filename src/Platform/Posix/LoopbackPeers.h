#pragma once

#include "Platform/LoopbackServer.h"
#include "Platform/Posix/Descriptor.h"

#include <QByteArray>
#include <chrono>
#include <deque>
#include <memory>
#include <vector>

namespace velto {

/// One connection of the loopback server.
struct LoopbackPeer {
    /// A peer in HalfClosed waits for its answer too, but has finished sending: that it leaves has to be asked.
    enum class Phase : quint8 { Free, Reading, Waiting, HalfClosed, Writing, Lingering };

    Descriptor socket;
    std::unique_ptr<LoopbackConnection> protocol; ///< null once it has given or got its reply
    QByteArray reply;
    qsizetype sent = 0; ///< of the reply
    qsizetype held = 0; ///< what the protocol has been given while it reads
    qsizetype drained = 0;
    quint64 lastHeard = 0; ///< larger than that of all who were heard before
    std::chrono::steady_clock::time_point deadline;
    quint32 place = 0;
    quint32 generation = 0; ///< how often its place was taken
    Phase phase = Phase::Free;
    quint32 events = 0; ///< what epoll watches, once registered
    bool registered = false;
    bool linger = false;

    /// Holds the place and its generation, so that an old id finds nothing.
    LoopbackServer::ConnectionId id() const { return LoopbackServer::ConnectionId(generation) << 32 | place; }
    bool isWaiting() const { return phase == Phase::Waiting || phase == Phase::HalfClosed; }
    bool isBusy() const { return phase != Phase::Free && !isWaiting(); }
};

/// The server's connections, and how many of them are in which phase. Peers stay where they are in memory. One thread.
class LoopbackPeers {
public:
    LoopbackPeer &add(Descriptor socket);
    /// Null if it is gone.
    LoopbackPeer *find(LoopbackServer::ConnectionId id);
    /// The busy one that was heard longest ago; null if there is none.
    LoopbackPeer *mostSilent(const LoopbackPeer *except);
    /// Calls `use` with each peer in turn, which may be dropped by it.
    template <typename Use> void each(Use use)
    {
        for (auto &peer : m_peers)
            use(peer);
    }

    void setPhase(LoopbackPeer &peer, LoopbackPeer::Phase phase);
    void heard(LoopbackPeer &peer) { peer.lastHeard = ++m_turn; }
    /// Its protocol keeps so many bytes more.
    void hold(LoopbackPeer &peer, qsizetype bytes);
    /// The protocol's bytes no longer count.
    void release(LoopbackPeer &peer);
    /// Closes the connection.
    void drop(LoopbackPeer &peer);

    int busy() const { return m_busy; }
    int waiting() const { return m_waiting; } ///< the half-closed ones among them
    int halfClosed() const { return m_halfClosed; }
    qsizetype held() const { return m_held; } ///< bytes of all protocols

private:
    std::deque<LoopbackPeer> m_peers; ///< never shrinks
    std::vector<quint32> m_free; ///< places
    int m_busy = 0;
    int m_waiting = 0;
    int m_halfClosed = 0;
    qsizetype m_held = 0;
    quint64 m_turn = 0;
};

} // namespace velto
