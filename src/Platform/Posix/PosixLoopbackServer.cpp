#include "Platform/Posix/PosixLoopbackServer.h"

#include "Platform/Posix/LoopbackWorker.h"

#include <csignal>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <pthread.h>
#include <sys/socket.h>
#include <system_error>

namespace velto {

namespace {

constexpr int kBacklog = 1024;

bool set(const Descriptor &socket, int level, int option)
{
    const int on = 1;
    return setsockopt(socket.get(), level, option, &on, sizeof on) == 0;
}

/// Bound to 127.0.0.1, so that nothing outside the machine reaches it. An empty descriptor if the port can't be bound.
Descriptor listeningSocket(quint16 port)
{
    Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    // Accepted sockets inherit TCP_NODELAY.
    if (socket && set(socket, SOL_SOCKET, SO_REUSEADDR) && set(socket, IPPROTO_TCP, TCP_NODELAY)
        && bind(socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0
        && listen(socket.get(), kBacklog) == 0)
        return socket;
    return {};
}

quint16 portOf(const Descriptor &socket)
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    return getsockname(socket.get(), reinterpret_cast<sockaddr *>(&address), &size) == 0 ? ntohs(address.sin_port) : 0;
}

/// A thread inherits its signal mask from the one that starts it; so the program's signals stay with its other threads.
class SignalsBlocked {
public:
    SignalsBlocked()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    SignalsBlocked(const SignalsBlocked &) = delete;
    SignalsBlocked &operator=(const SignalsBlocked &) = delete;
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

private:
    sigset_t m_before;
};

} // namespace

PosixLoopbackServer::PosixLoopbackServer()
    : PosixLoopbackServer(Limits())
{
}

PosixLoopbackServer::PosixLoopbackServer(const Limits &limits)
    : m_limits(limits)
{
}

PosixLoopbackServer::~PosixLoopbackServer()
{
    if (m_thread.joinable()) {
        m_mailbox->stop();
        m_thread.join();
    }
}

bool PosixLoopbackServer::listen(quint16 port, MakeConnection make)
{
    if (m_thread.joinable())
        return false;
    auto socket = listeningSocket(port);
    if (!socket)
        return false;
    const auto actualPort = portOf(socket);
    auto mailbox = std::make_shared<LoopbackMailbox>();
    auto worker = std::make_unique<LoopbackWorker>(m_limits, std::move(socket), mailbox, std::move(make));
    if (!worker->prepare())
        return false;

    m_mailbox = std::move(mailbox); // before the thread starts: its connections may be answered at once
    m_port = actualPort;
    try {
        const SignalsBlocked blocked;
        m_thread = std::thread([worker = std::move(worker)]() mutable {
            pthread_setname_np(pthread_self(), "velto-hooks");
            worker->run();
            worker.reset();
        });
    } catch (const std::system_error &) { // no more threads
        m_mailbox.reset();
        m_port = 0;
        return false;
    }
    return true;
}

void PosixLoopbackServer::reply(ConnectionId connection, QByteArray bytes)
{
    if (m_mailbox)
        m_mailbox->post(connection, std::move(bytes));
}

} // namespace velto
