#pragma once

#include "Platform/LoopbackServer.h"
#include "Platform/Posix/Descriptor.h"

#include <mutex>
#include <vector>

namespace velto {

/// How other threads reach the server's thread.
class LoopbackMailbox {
public:
    using ConnectionId = LoopbackServer::ConnectionId;
    struct Letter {
        ConnectionId connection;
        QByteArray reply;
    };

    LoopbackMailbox();

    /// Readable when there is mail; -1 if the system had no descriptor left.
    int descriptor() const { return m_event.get(); }
    void post(ConnectionId connection, QByteArray reply);
    void stop();
    /// All letters so far, in order; true with them once it is time to stop.
    bool take(std::vector<Letter> &letters);

private:
    void ring();

    Descriptor m_event;
    std::mutex m_mutex;
    std::vector<Letter> m_letters;
    bool m_stopping = false;
};

} // namespace velto
