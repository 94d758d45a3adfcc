#pragma once

#include "Platform/LoopbackServer.h"

#include <mutex>
#include <utility>
#include <vector>

namespace velto {

/// A file descriptor and its end.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int fd)
        : m_fd(fd)
    {
    }
    Descriptor(Descriptor &&other) noexcept
        : m_fd(std::exchange(other.m_fd, -1))
    {
    }
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor();

    int get() const { return m_fd; }
    explicit operator bool() const { return m_fd >= 0; }

private:
    int m_fd = -1;
};

/// How other threads reach the server's thread.
class LoopbackMailbox {
public:
    using ConnectionId = LoopbackServer::ConnectionId;
    struct Letter {
        ConnectionId connection;
        QByteArray reply;
    };

    LoopbackMailbox();

    /// Readable when there is mail; -1 if the system gave none.
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
