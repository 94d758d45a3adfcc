#pragma once

#include "Platform/LoopbackServer.h"

#include <chrono>
#include <thread>

namespace velto {

class LoopbackMailbox;

/// One thread on epoll. At rest it makes no wake-up: its only timer runs while something unfinished is connected.
class PosixLoopbackServer final : public LoopbackServer {
public:
    /// What keeps memory, descriptors and patience bounded.
    struct Limits {
        /// Connections that are read from, written to or closing. When one more comes, the one that was silent longest goes.
        int busy = 256;
        /// Connections that wait for an answer; a further one is dropped.
        int waiting = 256;
        /// Bytes that all busy connections together have sent; beyond it the one that was silent longest goes.
        qsizetype buffered = 16'777'216;
        /// From the accept to the end, for connections that don't wait for an answer. Coarse: up to a fifth more.
        std::chrono::milliseconds patience{10'000};
    };

    PosixLoopbackServer();
    explicit PosixLoopbackServer(const Limits &limits);
    ~PosixLoopbackServer() override;

    bool listen(quint16 port, MakeConnection make) override;
    quint16 port() const override { return m_port; }
    void reply(ConnectionId connection, QByteArray bytes) override;

private:
    Limits m_limits;
    quint16 m_port = 0;
    std::shared_ptr<LoopbackMailbox> m_mailbox; ///< null when not listening
    std::thread m_thread;
};

} // namespace velto
