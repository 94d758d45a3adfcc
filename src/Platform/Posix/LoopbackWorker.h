#pragma once

#include "Platform/Posix/LoopbackMailbox.h"
#include "Platform/Posix/PosixLoopbackServer.h"

#include <array>
#include <deque>
#include <vector>

namespace velto {

/// The loop of the server's thread, and everything that only this thread touches.
class LoopbackWorker {
public:
    LoopbackWorker(const PosixLoopbackServer::Limits &limits, Descriptor listening, std::shared_ptr<LoopbackMailbox> mailbox,
                   LoopbackServer::MakeConnection make);

    /// False if the system has no more descriptors for it.
    bool prepare();
    /// Until the mailbox says stop.
    void run();

private:
    using ConnectionId = LoopbackServer::ConnectionId;
    using Instant = std::chrono::steady_clock::time_point;
    /// A peer in HalfClosed waits for its answer too, but has finished sending: that it leaves has to be asked.
    enum class Phase : quint8 { Free, Reading, Waiting, HalfClosed, Writing, Lingering };

    /// One place for a connection. Its id holds the place and how often it was taken, so that an old id finds nothing.
    struct Peer {
        Descriptor socket;
        std::unique_ptr<LoopbackConnection> protocol; ///< null once it has given or got its reply
        QByteArray reply;
        qsizetype sent = 0; ///< of the reply
        qsizetype held = 0; ///< what the protocol has been given while it reads
        qsizetype drained = 0;
        quint64 lastHeard = 0; ///< by m_turn
        Instant deadline;
        quint32 place = 0;
        quint32 generation = 0;
        Phase phase = Phase::Free;
        quint32 events = 0; ///< what epoll watches, once registered
        bool registered = false;
        bool linger = false;
    };

    bool readMail();
    void handle(ConnectionId id, quint32 events);
    void acceptSome();
    bool canGoOnAccepting(int error);
    void pauseAccepting(bool pause);
    void welcome(Descriptor socket);
    Peer &freePeer();
    Peer *find(ConnectionId id);

    void readFrom(Peer &peer);
    void give(Peer &peer, QByteArrayView bytes, bool finished);
    void reply(Peer &peer, QByteArray bytes, bool linger);
    void write(Peer &peer);
    void drain(Peer &peer);
    void seeWhetherGone(Peer &peer);
    void await(Peer &peer, Phase phase, quint32 events);
    static bool isWaiting(Phase phase) { return phase == Phase::Waiting || phase == Phase::HalfClosed; }
    static bool isBusy(Phase phase) { return phase != Phase::Free && !isWaiting(phase); }
    std::chrono::milliseconds nap() const;
    void setPhase(Peer &peer, Phase phase);
    void release(Peer &peer);
    void drop(Peer &peer);
    bool dropMostSilent(const Peer *except = nullptr);
    void sweep(Instant now);

    PosixLoopbackServer::Limits m_limits;
    Descriptor m_listening;
    Descriptor m_epoll;
    std::shared_ptr<LoopbackMailbox> m_mailbox;
    LoopbackServer::MakeConnection m_make;
    std::deque<Peer> m_peers; ///< never shrinks, and never moves one
    std::vector<quint32> m_free; ///< places
    std::vector<LoopbackMailbox::Letter> m_letters;
    int m_busy = 0;
    int m_waiting = 0;
    int m_halfClosed = 0;
    qsizetype m_held = 0;
    quint64 m_turn = 0;
    Instant m_nextSweep;
    Instant m_nextLook;
    Instant m_acceptAgain;
    bool m_acceptPaused = false;
    std::array<char, 65'536> m_scratch;
};

} // namespace velto
