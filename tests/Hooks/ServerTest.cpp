#include "Client.h"
#include "Platform/Posix/Descriptor.h"
#include "Platform/Posix/PeerSocket.h"
#include "Platform/Posix/PosixLoopbackServer.h"
#include "RunTests.h"

#include <QSemaphore>

using namespace velto;

namespace {

/// Waits for an answer to whatever it received.
class Waiting final : public LoopbackConnection {
public:
    explicit Waiting(QSemaphore &received)
        : m_received(received)
    {
    }
    Want received(QByteArrayView, bool, QByteArray &) override
    {
        m_received.release();
        return Want::Wait;
    }

private:
    QSemaphore &m_received;
};

} // namespace

/// The loopback server and its peers; its bounds are tested with the listener.
class ServerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void repliesToNobodyElseOnceThePeerIsGone()
    {
        PosixLoopbackServer server;
        QSemaphore received;
        std::atomic<LoopbackServer::ConnectionId> latest;
        QVERIFY(server.listen(0, [&](LoopbackServer::ConnectionId id) {
            latest = id;
            return std::make_unique<Waiting>(received);
        }));
        const auto come = [&](Client &client) {
            client.connectTo(server.port());
            client.send("x");
            return received.tryAcquire(1, Client::kLimit) ? latest.load() : 0;
        };
        Client first;
        const auto old = come(first);
        server.reply(old, "first");
        QCOMPARE(first.reply(), "first");
        first.leave();

        Client second; // in the same slot as the first
        const auto id = come(second);
        for (const auto &[to, what] : {std::pair(old, "late"), {12'345, "to nobody"}, {id, "second"}, {id, "again"}})
            server.reply(to, what);
        QCOMPARE(second.reply(), "second");
    }

    void theSystemTellsAPeerThatIsGoneFromOneThatOnlyListens()
    {
        const Descriptor listening(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_in address{};
        socklen_t size = sizeof address;
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto *const where = reinterpret_cast<sockaddr *>(&address);
        QVERIFY(bind(listening.get(), where, size) == 0 && listen(listening.get(), 4) == 0);
        QCOMPARE(getsockname(listening.get(), where, &size), 0);
        for (const auto ask : {&peerSocketByDiag, &peerSocketByTable}) {
            Client client(ntohs(address.sin_port));
            const Descriptor accepted(accept4(listening.get(), nullptr, nullptr, SOCK_CLOEXEC));
            QCOMPARE(ask(accepted.get()), PeerSocket::Owned);
            client.finishSending();
            QCOMPARE(ask(accepted.get()), PeerSocket::Owned);
            client.leave();
            QCOMPARE(ask(accepted.get()), PeerSocket::Gone);
        }
        QCOMPARE(peerSocketOf(listening.get()), PeerSocket::Unknown); // it has no peer
    }
};

static const Registered<ServerTest> registered;

#include "ServerTest.moc"
