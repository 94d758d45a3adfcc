// Hook calls for a server on loopback: POSTs of 1 KB, one a connection. The secret comes in the environment as VELTO_TOKEN.
//
//     listener-load PORT PATH silence COUNT     each after 10 ms of silence; p50 and p99 in microseconds
//     listener-load PORT PATH row COUNT         one right after the other; p50 and p99
//     listener-load PORT PATH clients COUNT     eight clients at once; requests a second
//
// A further argument is the number of silent connections that are opened first and kept.

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kClients = 8;
constexpr std::size_t kRequestSize = 1024;

std::string makeRequest(const std::string &path)
{
    const char *token = std::getenv("VELTO_TOKEN");
    std::string body = R"({"session_id":"aefe0d0b-131d-43a7-b83d-daf04de24178","cwd":"/home/me/proj",)"
                       R"("prompt_id":"9c0aa4c0-8d74-4c12-bb94-9b927e56e127","permission_mode":"default",)"
                       R"("hook_event_name":"Stop","stop_hook_active":false,"last_assistant_message":")";
    const std::string end = R"(","background_tasks":[],"session_crons":[]})";
    const auto header = [&](std::size_t length) {
        return "POST " + path
            + " HTTP/1.1\r\nHost: 127.0.0.1\r\nUser-Agent: curl/7.88.1\r\nAccept: */*\r\nX-Velto-Token: " + (token ? token : "")
            + "\r\nContent-Length: " + std::to_string(length) + "\r\nContent-Type: application/x-www-form-urlencoded\r\n\r\n";
    };
    const auto head = header(999).size();
    body.append(kRequestSize - std::min(kRequestSize, head + body.size() + end.size()), 'a');
    body += end;
    return header(body.size()) + body;
}

int connectTo(int port)
{
    const int fd = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(std::uint16_t(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (fd < 0 || connect(fd, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0) {
        std::perror("connect");
        std::exit(1);
    }
    return fd;
}

/// One call, until the server has closed the connection; its microseconds. Anything but a complete 204 ends the program.
double call(int port, const std::string &request)
{
    const auto start = Clock::now();
    const int fd = connectTo(port);
    std::array<char, 1024> reply;
    std::size_t received = 0;
    if (send(fd, request.data(), request.size(), MSG_NOSIGNAL) == ssize_t(request.size())) {
        ssize_t count = 0;
        while (received < reply.size() && (count = recv(fd, reply.data() + received, reply.size() - received, 0)) > 0)
            received += std::size_t(count);
    }
    close(fd);
    const std::chrono::duration<double, std::micro> took = Clock::now() - start;
    if (received < 12 || std::memcmp(reply.data(), "HTTP/1.1 204", 12) != 0) {
        std::fprintf(stderr, "not answered: %.*s\n", int(received), reply.data());
        std::exit(1);
    }
    return took.count();
}

void printPercentiles(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    std::printf("p50 %.1f p99 %.1f\n", times[times.size() / 2], times[times.size() * 99 / 100]);
}

void oneByOne(int port, const std::string &request, int count, std::chrono::milliseconds silence)
{
    std::vector<double> times;
    for (int i = 0; i < count; ++i) {
        std::this_thread::sleep_for(silence);
        times.push_back(call(port, request));
    }
    printPercentiles(std::move(times));
}

void manyAtOnce(int port, const std::string &request, int count)
{
    std::atomic<int> left = count;
    const auto start = Clock::now();
    std::vector<std::thread> clients;
    for (int i = 0; i < kClients; ++i) {
        clients.emplace_back([&] {
            while (left.fetch_sub(1) > 0)
                call(port, request);
        });
    }
    for (auto &client : clients)
        client.join();
    const std::chrono::duration<double> took = Clock::now() - start;
    std::printf("rate %.0f\n", count / took.count());
}

void allowManyDescriptors()
{
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 5) {
        std::fprintf(stderr, "usage: listener-load PORT PATH silence|row|clients COUNT [SILENT]\n");
        return 2;
    }
    const int port = std::atoi(argv[1]);
    const auto request = makeRequest(argv[2]);
    const std::string mode = argv[3];
    const int count = std::max(1, std::atoi(argv[4]));
    allowManyDescriptors();
    for (int i = 0; argc > 5 && i < std::atoi(argv[5]); ++i)
        connectTo(port); // kept until the program ends

    if (mode == "clients")
        manyAtOnce(port, request, count);
    else
        oneByOne(port, request, count, std::chrono::milliseconds(mode == "silence" ? 10 : 0));
    return 0;
}
