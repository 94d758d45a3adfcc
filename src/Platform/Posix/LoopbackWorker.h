#pragma once

#include "Platform/Posix/LoopbackMailbox.h"
#include "Platform/Posix/LoopbackPeers.h"
#include "Platform/Posix/PosixLoopbackServer.h"

#include <array>
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
    using Phase = LoopbackPeer::Phase;

    bool readMail();
    void handle(ConnectionId id, quint32 events);
    void acceptSome();
    bool canGoOnAccepting(int error);
    void pauseAccepting(bool pause);
    void welcome(Descriptor socket);

    void readFrom(LoopbackPeer &peer);
    void give(LoopbackPeer &peer, QByteArrayView bytes, bool finished);
    void reply(LoopbackPeer &peer, QByteArray bytes, bool linger);
    void write(LoopbackPeer &peer);
    void drain(LoopbackPeer &peer);
    void seeWhetherGone(LoopbackPeer &peer);
    void await(LoopbackPeer &peer, Phase phase, quint32 events);
    std::chrono::milliseconds nap() const;
    bool dropMostSilent(const LoopbackPeer *except = nullptr);
    void sweep(Instant now);

    PosixLoopbackServer::Limits m_limits;
    Descriptor m_listening;
    Descriptor m_epoll;
    std::shared_ptr<LoopbackMailbox> m_mailbox;
    LoopbackServer::MakeConnection m_make;
    LoopbackPeers m_peers;
    std::vector<LoopbackMailbox::Letter> m_letters;
    Instant m_nextSweep;
    Instant m_nextLook;
    Instant m_acceptAgain;
    bool m_acceptPaused = false;
    std::array<char, 65'536> m_scratch;
};

} // namespace velto
