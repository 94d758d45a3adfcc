#include "Platform/Posix/PeerSocket.h"

#include "Platform/Posix/Descriptor.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <memory>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <optional>
#include <sys/socket.h>

namespace velto {

namespace {

/// Both addresses, as the peer sees them, in network byte order.
struct Ends {
    sockaddr_in own{};
    sockaddr_in other{};
};

std::optional<Ends> endsOf(int socket)
{
    Ends ends;
    socklen_t size = sizeof ends.own;
    socklen_t otherSize = sizeof ends.other;
    if (getpeername(socket, reinterpret_cast<sockaddr *>(&ends.own), &size) != 0
        || getsockname(socket, reinterpret_cast<sockaddr *>(&ends.other), &otherSize) != 0 || ends.own.sin_family != AF_INET)
        return std::nullopt;
    return ends;
}

struct DiagQuestion {
    nlmsghdr header{};
    inet_diag_req_v2 socket{};
};

DiagQuestion questionAbout(const Ends &ends)
{
    DiagQuestion question;
    question.header.nlmsg_len = sizeof question;
    question.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    question.header.nlmsg_flags = NLM_F_REQUEST;
    question.socket.sdiag_family = AF_INET;
    question.socket.sdiag_protocol = IPPROTO_TCP;
    question.socket.idiag_states = ~0U;
    auto &id = question.socket.id;
    id.idiag_sport = ends.own.sin_port;
    id.idiag_dport = ends.other.sin_port;
    id.idiag_src[0] = ends.own.sin_addr.s_addr;
    id.idiag_dst[0] = ends.other.sin_addr.s_addr;
    id.idiag_cookie[0] = id.idiag_cookie[1] = INET_DIAG_NOCOOKIE;
    return question;
}

/// Reads the kernel's answer: the socket, or an error instead.
PeerSocket verdict(const nlmsghdr *answer)
{
    if (answer->nlmsg_type == NLMSG_ERROR && answer->nlmsg_len >= NLMSG_LENGTH(sizeof(nlmsgerr))) {
        const auto *error = static_cast<const nlmsgerr *>(NLMSG_DATA(answer));
        return error->error == -ENOENT ? PeerSocket::Gone : PeerSocket::Unknown;
    }
    if (answer->nlmsg_type != SOCK_DIAG_BY_FAMILY || answer->nlmsg_len < NLMSG_LENGTH(sizeof(inet_diag_msg)))
        return PeerSocket::Unknown;
    const auto *found = static_cast<const inet_diag_msg *>(NLMSG_DATA(answer));
    // If the connection no longer exists, the kernel looks up the listener at its port instead.
    return found->idiag_inode != 0 && found->idiag_state != TCP_LISTEN ? PeerSocket::Owned : PeerSocket::Gone;
}

} // namespace

PeerSocket peerSocketByDiag(int socket)
{
    const auto ends = endsOf(socket);
    const Descriptor kernel(::socket(AF_NETLINK, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_SOCK_DIAG));
    if (!ends || !kernel)
        return PeerSocket::Unknown;
    const auto question = questionAbout(*ends);
    alignas(nlmsghdr) std::array<char, 4096> answer;
    // The kernel answers before send() returns.
    if (send(kernel.get(), &question, sizeof question, 0) != ssize_t(sizeof question))
        return PeerSocket::Unknown;
    const auto size = recv(kernel.get(), answer.data(), answer.size(), 0);
    const auto *header = reinterpret_cast<const nlmsghdr *>(answer.data());
    return size >= 0 && NLMSG_OK(header, unsigned(size)) ? verdict(header) : PeerSocket::Unknown;
}

PeerSocket peerSocketByTable(int socket)
{
    const auto ends = endsOf(socket);
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> table(std::fopen("/proc/net/tcp", "re"), &std::fclose);
    if (!ends || !table)
        return PeerSocket::Unknown;
    // proc(5): addresses are printed in memory order, ports as numbers.
    std::array<char, 512> line;
    while (std::fgets(line.data(), int(line.size()), table.get())) {
        unsigned own = 0;
        unsigned ownPort = 0;
        unsigned other = 0;
        unsigned otherPort = 0;
        unsigned long inode = 0;
        const int fields = std::sscanf(line.data(), " %*u: %x:%x %x:%x %*x %*x:%*x %*x:%*x %*x %*u %*u %lu", &own, &ownPort,
                                       &other, &otherPort, &inode);
        if (fields == 5 && own == ends->own.sin_addr.s_addr && ownPort == ntohs(ends->own.sin_port)
            && other == ends->other.sin_addr.s_addr && otherPort == ntohs(ends->other.sin_port))
            return inode != 0 ? PeerSocket::Owned : PeerSocket::Gone;
    }
    // An IPv6 socket with a mapped address is in another table.
    return PeerSocket::Unknown;
}

PeerSocket peerSocketOf(int socket)
{
    const auto answer = peerSocketByDiag(socket);
    return answer == PeerSocket::Unknown ? peerSocketByTable(socket) : answer;
}

} // namespace velto
