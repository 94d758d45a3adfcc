#include "RunTests.h"

#include "Client.h"
#include "Platform/Posix/Descriptor.h"
#include "Platform/Posix/PeerSocket.h"
#include "Platform/Posix/PosixLoopbackServer.h"

#include <condition_variable>
#include <deque>
#include <fcntl.h>
#include <mutex>
#include <sys/resource.h>

using velto::LoopbackConnection;
using velto::LoopbackServer;
using velto::PosixLoopbackServer;

namespace {

const QByteArray kLong(8 * 1024 * 1024, 'l');

/// What the connections report to the test.
class Log {
public:
    void waits(LoopbackServer::ConnectionId id)
    {
        const std::scoped_lock lock(m_mutex);
        m_waiting.push_back(id);
        m_changed.notify_all();
    }
    void ends()
    {
        const std::scoped_lock lock(m_mutex);
        ++m_ended;
        m_changed.notify_all();
    }
    /// The next connection that sent "wait"; 0 if none does.
    LoopbackServer::ConnectionId nextWaiting()
    {
        std::unique_lock lock(m_mutex);
        if (!m_changed.wait_for(lock, Client::kLimit, [this] { return !m_waiting.empty(); }))
            return ~0ULL;
        const auto id = m_waiting.front();
        m_waiting.pop_front();
        return id;
    }
    bool untilEnded(int count)
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, Client::kLimit, [=, this] { return m_ended >= count; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<LoopbackServer::ConnectionId> m_waiting;
    int m_ended = 0;
};

/// One line, or what there is at the end of input: "wait", "long" and "refuse" are special, anything else is echoed.
class LineConnection final : public LoopbackConnection {
public:
    LineConnection(Log &log, LoopbackServer::ConnectionId id)
        : m_log(log)
        , m_id(id)
    {
    }
    ~LineConnection() override { m_log.ends(); }

    Want received(QByteArrayView bytes, bool finished, QByteArray &reply) override
    {
        m_text.append(bytes);
        if (!m_text.endsWith('\n') && !finished)
            return m_text.startsWith("refuse") ? refuse(reply) : Want::Read;
        if (m_text == "wait\n") {
            m_log.waits(m_id);
            return Want::Wait;
        }
        reply = m_text == "long\n" ? kLong : m_text;
        return Want::Close;
    }

private:
    static Want refuse(QByteArray &reply)
    {
        reply = "refused";
        return Want::Linger;
    }

    Log &m_log;
    LoopbackServer::ConnectionId m_id;
    QByteArray m_text;
};

class Server {
public:
    explicit Server(const PosixLoopbackServer::Limits &limits = {})
        : m_server(std::make_unique<PosixLoopbackServer>(limits))
    {
        m_server->listen(0, [this](auto id) { return std::make_unique<LineConnection>(log, id); });
    }
    Client client(const QByteArray &bytes = {}) const { return Client(m_server->port(), bytes); }
    PosixLoopbackServer *operator->() { return m_server.get(); }
    void end() { m_server.reset(); }

    Log log;

private:
    std::unique_ptr<PosixLoopbackServer> m_server;
};

} // namespace

/// The loopback server, with a small protocol for tests.
class ServerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void answersInPiecesAndAtTheEndOfTheStream()
    {
        Server server;
        auto pieces = server.client();
        for (const char *piece : {"a", "b", "c\n"})
            QVERIFY(pieces.send(piece));
        QCOMPARE(pieces.reply(), "abc\n");
        auto half = server.client("half");
        half.finishSending();
        QCOMPARE(half.reply(), "half");
        auto nothing = server.client();
        nothing.finishSending();
        QCOMPARE(nothing.reply(), "");
    }

    void sendsALongReplyToASlowReader()
    {
        Server server;
        auto slow = server.client("long\n");
        QCOMPARE(server.client("meanwhile\n").reply(), "meanwhile\n");
        QVERIFY(slow.reply() == kLong);
    }

    void letsAPeerFinishThatWasAnsweredEarly()
    {
        Server server;
        auto chatty = server.client("refuse");
        QVERIFY(server.log.untilEnded(1)); // the answer was sent
        QVERIFY(chatty.send(QByteArray(1024 * 1024, 'x')));
        QCOMPARE(chatty.reply(), "refused");
    }

    void sendsRepliesGivenJustBeforeTheEnd()
    {
        Server server;
        auto asking = server.client("wait\n");
        const auto id = server.log.nextWaiting();
        asking.send("more that nobody reads");
        server->reply(id, "an answer");
        server.end();
        QCOMPARE(asking.reply(), "an answer");
    }

    void repliesToNobodyElseOnceThePeerIsGone()
    {
        Server server;
        auto first = server.client("wait\n");
        const auto old = server.log.nextWaiting();
        server->reply(old, "first");
        QCOMPARE(first.reply(), "first");
        first.leave();

        auto second = server.client("wait\n"); // in the same slot as the first
        const auto id = server.log.nextWaiting();
        server->reply(old, "late");
        server->reply(12'345, "to nobody");
        server->reply(id, "second");
        server->reply(id, "again");
        QCOMPARE(second.reply(), "second");
    }

    void dropsTheMostSilentWhenOneMoreComes()
    {
        Server server({.busy = 4});
        std::vector<Client> silent;
        for (int i = 0; i < 300; ++i)
            silent.push_back(server.client());
        QCOMPARE(server.client("a real one\n").reply(), "a real one\n");
        for (int i = 0; i < 295; ++i)
            QCOMPARE(silent[std::size_t(i)].reply(), "");
        QVERIFY(silent.back().send("not dropped\n"));
        QCOMPARE(silent.back().reply(), "not dropped\n");
    }

    void dropsTheUnfinishedInTheEndButNotTheWaiting()
    {
        Server server({.patience = std::chrono::milliseconds(50)});
        auto waiting = server.client("wait\n");
        const auto id = server.log.nextWaiting();
        auto silent = server.client();
        auto half = server.client("half a line");
        QCOMPARE(silent.reply(), "");
        QCOMPARE(half.reply(), "");
        server->reply(id, "still here");
        QCOMPARE(waiting.reply(), "still here");
    }

    void boundsWhatAllTogetherSend()
    {
        Server server({.buffered = 100'000});
        std::vector<Client> hoarders;
        for (int i = 0; i < 5; ++i)
            hoarders.push_back(server.client(QByteArray(60'000, 'x')));
        // A peer that is dropped may see a reset.
        for (int i = 0; i < 4; ++i)
            QVERIFY(hoarders[std::size_t(i)].reply().size() < 6);
        hoarders.back().send("\n");
        QCOMPARE(hoarders.back().reply().size(), 60'001);
    }

    void theSystemTellsAPeerThatIsGoneFromOneThatOnlyListens()
    {
        using velto::PeerSocket;
        const velto::Descriptor listening(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_in address{};
        socklen_t size = sizeof address;
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto *const where = reinterpret_cast<sockaddr *>(&address);
        QVERIFY(bind(listening.get(), where, size) == 0 && listen(listening.get(), 4) == 0);
        QCOMPARE(getsockname(listening.get(), where, &size), 0);
        for (const auto ask : {&velto::peerSocketByDiag, &velto::peerSocketByTable}) {
            Client client(ntohs(address.sin_port));
            const velto::Descriptor accepted(accept4(listening.get(), nullptr, nullptr, SOCK_CLOEXEC));
            QCOMPARE(ask(accepted.get()), PeerSocket::Owned);
            client.finishSending();
            QCOMPARE(ask(accepted.get()), PeerSocket::Owned);
            client.leave();
            QCOMPARE(ask(accepted.get()), PeerSocket::Gone);
        }
        QCOMPARE(velto::peerSocketOf(listening.get()), PeerSocket::Unknown); // it has no peer
    }

    void waitsOutALackOfDescriptors()
    {
        Server server;
        Client client;
        rlimit before{};
        QCOMPARE(getrlimit(RLIMIT_NOFILE, &before), 0);
        const int next = fcntl(0, F_DUPFD_CLOEXEC, 0);
        close(next);
        const rlimit none{rlim_t(next), before.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_NOFILE, &none), 0);
        const bool connected = client.connectTo(server->port()) && client.send("hello\n");
        const auto probe = fcntl(0, F_DUPFD_CLOEXEC, 0);
        setrlimit(RLIMIT_NOFILE, &before);
        QVERIFY(connected);
        QCOMPARE(probe, -1);
        QCOMPARE(client.reply(), "hello\n");
    }
};

static const Registered<ServerTest> registered;

#include "ServerTest.moc"
