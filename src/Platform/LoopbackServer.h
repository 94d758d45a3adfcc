#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QtGlobal>
#include <functional>
#include <memory>

namespace velto {

/// One accepted connection's protocol. Called on the server's thread only.
class LoopbackConnection {
public:
    enum class Want : quint8 {
        Read, ///< more bytes
        Wait, ///< nothing until the reply is sent through LoopbackServer::reply
        Close, ///< the connection is over; the peer has nothing more to send
        Linger, ///< likewise, but the peer may still be sending: it is read for a moment longer, so that it gets the reply
    };

    LoopbackConnection() = default;
    LoopbackConnection(const LoopbackConnection &) = delete;
    LoopbackConnection &operator=(const LoopbackConnection &) = delete;
    virtual ~LoopbackConnection() = default;

    /// New bytes, or none with `finished` when the peer has finished sending. Bytes appended to `reply` are sent, and
    /// the connection is closed once they are.
    virtual Want received(QByteArrayView bytes, bool finished, QByteArray &reply) = 0;
    /// The reply that `received` gave is on its way: do here what the peer needn't wait for.
    virtual void replied() { }
};

/// Accepts connections on 127.0.0.1 and serves them on a thread of its own, so that a busy UI never delays an answer.
/// Connections that stay silent, and those beyond a fixed number, are dropped: memory stays bounded whatever is sent.
class LoopbackServer {
public:
    using ConnectionId = quint64;
    using MakeConnection = std::function<std::unique_ptr<LoopbackConnection>(ConnectionId)>;

    LoopbackServer() = default;
    LoopbackServer(const LoopbackServer &) = delete;
    LoopbackServer &operator=(const LoopbackServer &) = delete;
    /// Sends the replies given so far, closes every connection and ends the thread.
    virtual ~LoopbackServer() = default;

    /// Binds 127.0.0.1:`port` (0 lets the system choose) and starts serving. `make` is called on the server's thread for
    /// each connection. False if the port can't be bound. UI thread.
    virtual bool listen(quint16 port, MakeConnection make) = 0;
    /// The port in use; 0 when not listening.
    virtual quint16 port() const = 0;
    /// Sends the reply of a connection that said Wait, and closes it. Any thread; does nothing if it is gone.
    virtual void reply(ConnectionId connection, QByteArray bytes) = 0;
};

} // namespace velto
