#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

/// A plain socket to a server on loopback. Waits end when the answer has come; the limit is for broken servers.
class Client {
public:
    static constexpr std::chrono::seconds kLimit{20};

    explicit Client(quint16 port, const QByteArray &bytes = {})
        : Client()
    {
        connectTo(port);
        send(bytes);
    }
    /// Not connected yet.
    Client()
        : m_fd(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
    }
    Client(Client &&other) noexcept
        : m_fd(std::exchange(other.m_fd, -1))
    {
    }
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;
    Client &operator=(Client &&) = delete;
    ~Client() { leave(); }

    bool connectTo(quint16 port)
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return ::connect(m_fd, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0;
    }
    bool send(const QByteArray &bytes)
    {
        return ::send(m_fd, bytes.constData(), std::size_t(bytes.size()), MSG_NOSIGNAL) == bytes.size();
    }
    void finishSending() { shutdown(m_fd, SHUT_WR); }
    /// Closes the connection with a reset.
    void reset()
    {
        const linger now{1, 0};
        setsockopt(m_fd, SOL_SOCKET, SO_LINGER, &now, sizeof now);
        leave();
    }
    void leave()
    {
        if (m_fd >= 0)
            close(std::exchange(m_fd, -1));
    }

    int descriptor() const { return m_fd; }

    /// What the server sent until it closed, while the event loop runs; "reset" or "nothing" if that fails.
    QByteArray reply()
    {
        const QDeadlineTimer deadline(kLimit);
        QByteArray all;
        while (!deadline.hasExpired()) {
            QCoreApplication::processEvents();
            pollfd readable{m_fd, POLLIN, 0};
            if (poll(&readable, 1, 1) < 1)
                continue;
            char buffer[65'536];
            const auto count = recv(m_fd, buffer, sizeof buffer, 0);
            if (count < 0)
                return "reset";
            if (count == 0)
                return all;
            all.append(buffer, count);
        }
        return "nothing";
    }

private:
    int m_fd;
};
