#include "Platform/Posix/LoopbackWorker.h"

#include "Platform/Posix/PeerSocket.h"

#include <cerrno>
#include <sys/epoll.h>
#include <sys/socket.h>

namespace velto {

namespace {

constexpr quint64 kListening = ~quint64(0);
constexpr quint64 kMailbox = kListening - 1;
constexpr int kEvents = 64;
constexpr int kAcceptsInARow = 16;
/// Bytes that a peer may still send after its request was refused, before its connection is dropped.
constexpr qsizetype kMaxDrained = 4'194'304;
/// How long accepting pauses when the system is out of descriptors or memory.
constexpr std::chrono::milliseconds kAcceptPause{100};
/// How often peers that have only finished sending are checked: no event reports that they leave.
constexpr std::chrono::milliseconds kLook{200};

} // namespace

LoopbackWorker::LoopbackWorker(const PosixLoopbackServer::Limits &limits, Descriptor listening,
                               std::shared_ptr<LoopbackMailbox> mailbox, LoopbackServer::MakeConnection make)
    : m_limits(limits)
    , m_listening(std::move(listening))
    , m_epoll(epoll_create1(EPOLL_CLOEXEC))
    , m_mailbox(std::move(mailbox))
    , m_make(std::move(make))
{
}

bool LoopbackWorker::prepare()
{
    epoll_event listening{EPOLLIN, {.u64 = kListening}};
    epoll_event mail{EPOLLIN, {.u64 = kMailbox}};
    return epoll_ctl(m_epoll.get(), EPOLL_CTL_ADD, m_listening.get(), &listening) == 0
        && epoll_ctl(m_epoll.get(), EPOLL_CTL_ADD, m_mailbox->descriptor(), &mail) == 0;
}

void LoopbackWorker::run()
{
    std::array<epoll_event, kEvents> events;
    bool stopping = false;
    while (!stopping) {
        const bool timed = m_peers.busy() > 0 || m_peers.halfClosed() > 0 || m_acceptPaused;
        const int count = epoll_wait(m_epoll.get(), events.data(), kEvents, timed ? int(nap().count()) : -1);
        for (int i = 0; i < count; ++i) {
            const auto &event = events[std::size_t(i)];
            if (event.data.u64 == kMailbox)
                stopping = readMail();
            else if (event.data.u64 == kListening)
                acceptSome();
            else
                handle(event.data.u64, event.events);
        }
        if (timed)
            sweep(std::chrono::steady_clock::now());
    }
}

std::chrono::milliseconds LoopbackWorker::nap() const
{
    if (m_acceptPaused)
        return kAcceptPause;
    return m_peers.halfClosed() > 0 ? std::min(kLook, m_limits.patience / 5) : m_limits.patience / 5;
}

bool LoopbackWorker::readMail()
{
    const bool stopping = m_mailbox->take(m_letters);
    for (auto &letter : m_letters) {
        auto *peer = m_peers.find(letter.connection);
        if (peer && peer->isWaiting())
            reply(*peer, std::move(letter.reply), true);
    }
    return stopping;
}

void LoopbackWorker::handle(ConnectionId id, quint32 events)
{
    auto *peer = m_peers.find(id);
    if (!peer) // dropped earlier in this turn
        return;
    switch (peer->phase) {
    case Phase::Free:
        return;
    case Phase::Reading:
        return readFrom(*peer);
    case Phase::Waiting:
    case Phase::HalfClosed:
        return (events & (EPOLLHUP | EPOLLERR)) != 0 ? m_peers.drop(*peer) : seeWhetherGone(*peer);
    case Phase::Writing:
        return write(*peer);
    case Phase::Lingering:
        return drain(*peer);
    }
}

void LoopbackWorker::acceptSome()
{
    for (int i = 0; i < kAcceptsInARow; ++i) {
        Descriptor socket(accept4(m_listening.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
        if (socket)
            welcome(std::move(socket));
        else if (!canGoOnAccepting(errno))
            return;
    }
}

bool LoopbackWorker::canGoOnAccepting(int error)
{
    switch (error) {
    case EAGAIN:
        return false;
    case EMFILE:
    case ENFILE:
    case ENOBUFS:
    case ENOMEM:
        if (dropMostSilent())
            return true;
        // The connection stays in the backlog, and epoll would report it without end.
        pauseAccepting(true);
        return false;
    default: // that one connection's own trouble
        return true;
    }
}

void LoopbackWorker::pauseAccepting(bool pause)
{
    epoll_event event{pause ? 0U : quint32(EPOLLIN), {.u64 = kListening}};
    epoll_ctl(m_epoll.get(), EPOLL_CTL_MOD, m_listening.get(), &event);
    m_acceptPaused = pause;
    m_acceptAgain = std::chrono::steady_clock::now() + kAcceptPause;
}

void LoopbackWorker::welcome(Descriptor socket)
{
    auto &peer = m_peers.add(std::move(socket));
    peer.deadline = std::chrono::steady_clock::now() + m_limits.patience;
    peer.protocol = m_make(peer.id());
    m_peers.setPhase(peer, Phase::Reading);
    readFrom(peer); // the request is often there already
}

void LoopbackWorker::readFrom(LoopbackPeer &peer)
{
    const auto count = recv(peer.socket.get(), m_scratch.data(), m_scratch.size(), 0);
    if (count >= 0) {
        m_peers.heard(peer);
        give(peer, QByteArrayView(m_scratch.data(), count), count == 0);
    } else if (errno == EAGAIN || errno == EINTR) {
        await(peer, Phase::Reading, EPOLLIN);
    } else {
        m_peers.drop(peer);
    }
}

void LoopbackWorker::give(LoopbackPeer &peer, QByteArrayView bytes, bool finished)
{
    QByteArray answer;
    const auto want = peer.protocol->received(bytes, finished, answer);
    switch (want) {
    case LoopbackConnection::Want::Read:
        if (finished)
            return m_peers.drop(peer);
        m_peers.hold(peer, bytes.size());
        return await(peer, Phase::Reading, EPOLLIN);
    case LoopbackConnection::Want::Wait:
        m_peers.release(peer);
        return m_peers.waiting() < m_limits.waiting ? await(peer, Phase::Waiting, EPOLLRDHUP) : m_peers.drop(peer);
    case LoopbackConnection::Want::Close:
    case LoopbackConnection::Want::Linger:
        break;
    }
    const auto protocol = std::move(peer.protocol);
    m_peers.release(peer);
    if (answer.isEmpty())
        return m_peers.drop(peer);
    reply(peer, std::move(answer), want == LoopbackConnection::Want::Linger);
    protocol->replied();
}

void LoopbackWorker::reply(LoopbackPeer &peer, QByteArray bytes, bool linger)
{
    if (peer.isWaiting())
        peer.deadline = std::chrono::steady_clock::now() + m_limits.patience;
    peer.protocol.reset();
    peer.reply = std::move(bytes);
    peer.linger = linger;
    m_peers.setPhase(peer, Phase::Writing);
    write(peer);
}

void LoopbackWorker::write(LoopbackPeer &peer)
{
    while (peer.sent < peer.reply.size()) {
        const auto count =
            send(peer.socket.get(), peer.reply.constData() + peer.sent, std::size_t(peer.reply.size() - peer.sent), MSG_NOSIGNAL);
        if (count >= 0)
            peer.sent += count;
        else if (errno == EAGAIN)
            return await(peer, Phase::Writing, EPOLLOUT);
        else if (errno != EINTR)
            return m_peers.drop(peer);
    }
    // Closing a socket with unread bytes would reset the connection, and the reply would be lost.
    if (!peer.linger || shutdown(peer.socket.get(), SHUT_WR) != 0)
        return m_peers.drop(peer);
    m_peers.setPhase(peer, Phase::Lingering);
    drain(peer);
}

void LoopbackWorker::drain(LoopbackPeer &peer)
{
    while (peer.drained <= kMaxDrained) {
        const auto count = recv(peer.socket.get(), m_scratch.data(), m_scratch.size(), 0);
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            return await(peer, Phase::Lingering, EPOLLIN);
        if (count <= 0)
            break;
        peer.drained += count;
    }
    m_peers.drop(peer);
}

/// The peer has either closed its socket, or only finished sending and still waits for its answer.
void LoopbackWorker::seeWhetherGone(LoopbackPeer &peer)
{
    switch (peerSocketOf(peer.socket.get())) {
    case PeerSocket::Gone:
        return m_peers.drop(peer);
    case PeerSocket::Owned:
        return await(peer, Phase::HalfClosed, 0);
    case PeerSocket::Unknown: // nothing more will be learnt by asking again
        return await(peer, Phase::Waiting, 0);
    }
}

/// Waits for one of these events on the peer; deadlines and polling follow from its phase.
void LoopbackWorker::await(LoopbackPeer &peer, Phase phase, quint32 events)
{
    m_peers.setPhase(peer, phase);
    if (!peer.registered || peer.events != events) {
        epoll_event event{events, {.u64 = peer.id()}};
        const int operation = peer.registered ? EPOLL_CTL_MOD : EPOLL_CTL_ADD;
        if (epoll_ctl(m_epoll.get(), operation, peer.socket.get(), &event) != 0)
            return m_peers.drop(peer);
        peer.registered = true;
        peer.events = events;
    }
    while (m_peers.busy() > m_limits.busy || m_peers.held() > m_limits.buffered) {
        if (!dropMostSilent(&peer))
            break;
    }
}

bool LoopbackWorker::dropMostSilent(const LoopbackPeer *except)
{
    auto *oldest = m_peers.mostSilent(except);
    if (oldest)
        m_peers.drop(*oldest);
    return oldest;
}

void LoopbackWorker::sweep(Instant now)
{
    if (m_acceptPaused && now >= m_acceptAgain)
        pauseAccepting(false);
    if (m_peers.halfClosed() > 0 && now >= m_nextLook) {
        m_nextLook = now + kLook;
        m_peers.each([this](LoopbackPeer &peer) {
            if (peer.phase == Phase::HalfClosed)
                seeWhetherGone(peer);
        });
    }
    if (now < m_nextSweep)
        return;
    m_nextSweep = now + m_limits.patience / 5;
    m_peers.each([this, now](LoopbackPeer &peer) {
        if (peer.isBusy() && peer.deadline <= now)
            m_peers.drop(peer);
    });
}

} // namespace velto
