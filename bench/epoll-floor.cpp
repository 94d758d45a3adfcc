// A lower bound for the hook listener: a bare epoll server that answers 204 to one POST per connection and does nothing else.
// Prints its port, and runs until its standard input ends.

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <string>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr char kReply[] =
    "HTTP/1.1 204 No Content\r\nConnection: close\r\nContent-Type: application/json\r\nContent-Length: 0\r\n\r\n";

std::vector<std::string> buffers; // indexed by descriptor

int listenOnLoopback()
{
    const int listening = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int on = 1;
    setsockopt(listening, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    setsockopt(listening, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (bind(listening, reinterpret_cast<sockaddr *>(&address), size) != 0 || listen(listening, 1024) != 0
        || getsockname(listening, reinterpret_cast<sockaddr *>(&address), &size) != 0)
        std::exit(1);
    std::printf("%d -\n", ntohs(address.sin_port));
    std::fflush(stdout);
    return listening;
}

bool complete(const std::string &request)
{
    const auto end = request.find("\r\n\r\n");
    if (end == std::string::npos)
        return false;
    const auto *length = strcasestr(request.c_str(), "\r\ncontent-length:");
    const auto wanted = length ? std::strtoul(length + 17, nullptr, 10) : 0;
    return request.size() - end - 4 >= wanted;
}

void watch(int epoll, int fd)
{
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = fd;
    epoll_ctl(epoll, EPOLL_CTL_ADD, fd, &event);
}

void serve(int fd)
{
    static std::array<char, 65'536> scratch;
    const auto count = recv(fd, scratch.data(), scratch.size(), 0);
    auto &buffer = buffers[std::size_t(fd)];
    if (count > 0) {
        buffer.append(scratch.data(), std::size_t(count));
        if (!complete(buffer))
            return;
        if (send(fd, kReply, sizeof kReply - 1, MSG_NOSIGNAL) < 0)
            std::perror("send");
    }
    buffer.clear();
    close(fd);
}

} // namespace

int main()
{
    buffers.resize(65'536);
    const int listening = listenOnLoopback();
    const int epoll = epoll_create1(EPOLL_CLOEXEC);
    watch(epoll, listening);
    watch(epoll, STDIN_FILENO);
    std::array<epoll_event, 64> events;
    for (;;) {
        const int count = epoll_wait(epoll, events.data(), int(events.size()), -1);
        for (int i = 0; i < count; ++i) {
            const int fd = events[std::size_t(i)].data.fd;
            if (fd == STDIN_FILENO)
                return 0;
            if (fd != listening) {
                serve(fd);
                continue;
            }
            int accepted = 0;
            while ((accepted = accept4(listening, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC)) >= 0)
                watch(epoll, accepted);
        }
    }
}
