#pragma once

#include <QList>
#include <QMap>
#include <QObject>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QUrl>
#include <functional>
#include <memory>

class QTcpSocket;

namespace velto {

/// A web service on loopback that answers as a test says, with TLS from its own authority or without.
class HttpStandIn : public QObject {
    Q_OBJECT
public:
    enum class Security : quint8 { Plain, Tls };
    enum class Manner : quint8 {
        Whole, ///< the answer, then the connection stays open for the next request
        Silent, ///< no answer, ever
        Hangup, ///< the connection ends without a byte
        CutOff, ///< all of the head, half of the body, then the end
        Trickle, ///< the head, then a byte of the body every 20 ms
    };
    struct Request {
        QByteArray method;
        QByteArray target; ///< path and query, as it came
        QMap<QByteArray, QByteArray> headers; ///< names in lower case
        QByteArray body;
    };
    struct Answer {
        int status = 200;
        QByteArray body = "{}";
        QList<QByteArray> headers = {}; ///< whole lines, "Location: /x"
        Manner manner = Manner::Whole;
    };

    explicit HttpStandIn(Security security = Security::Plain);
    ~HttpStandIn() override;

    /// The address of its root, with the port that the system chose.
    QUrl url(const QString &path = {}) const;
    /// What a client needs to trust it.
    QSslConfiguration trust() const;

    std::function<Answer(const Request &)> answer = [](const Request &) { return Answer{}; };
    QList<Request> requests;
    /// How many are open now.
    qsizetype connections() const;

private:
    void serve(QTcpSocket *socket);
    void reply(QTcpSocket *socket, const Request &request);

    Security m_security;
    std::unique_ptr<QTcpServer> m_server;
};

} // namespace velto
