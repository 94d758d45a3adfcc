#pragma once

#include <QByteArray>
#include <QList>
#include <QNetworkAccessManager>
#include <QSslConfiguration>
#include <QString>
#include <QUrl>
#include <chrono>
#include <memory>
#include <optional>
#include <qcoro/qcorotask.h>

class QNetworkReply;

namespace velto {

/// One question to a web service.
struct HttpRequest {
    QUrl url;
    QByteArray method = QByteArrayLiteral("GET");
    QList<std::pair<QByteArray, QByteArray>> headers = {};
    std::optional<QByteArray> body = {};
    /// How long the service may stay silent. The whole exchange may take four times as long.
    std::chrono::milliseconds timeout = std::chrono::seconds(60);
    /// The largest body that is taken in, in bytes.
    qint64 maximum = 16 * 1024 * 1024;
};

/// What came of it.
struct HttpReply {
    /// Nothing if there was no whole answer: no such host, no route, a broken certificate, silence, an early end, too much.
    std::optional<int> status = {};
    QByteArray body = {};
    /// Without a status: why, as the network layer says it. Holds no header and no part of a body.
    QString fault = {};
};

/// HTTP for the readers of services: no cookies, no cache, no stored credentials. A request that carries a body or an
/// Authorization header follows redirects within its origin only, others wherever it's no less safe; a redirect that isn't
/// followed is an answer with its own status.
/// UI thread only; the transfer itself runs elsewhere. Destroying it ends what is under way, as a fault.
class Http {
public:
    /// With the system's TLS settings, which are looked for when they are needed: the library behind them is large.
    Http() = default;
    explicit Http(QSslConfiguration tls);
    Http(const Http &) = delete;
    Http &operator=(const Http &) = delete;
    virtual ~Http();

    /// Never throws. The caller checks after the co_await whether its own object still lives. Give the request a name and move
    /// it in: GCC 12 destroys an aggregate twice that is made within the co_await itself (`co_await send({.url = ...})`).
    virtual QCoro::Task<HttpReply> send(HttpRequest request);

private:
    QNetworkReply *start(const HttpRequest &request);

    std::optional<QSslConfiguration> m_tls;
    std::unique_ptr<QNetworkAccessManager> m_manager; ///< made for the first request: a quiet strip needs none
};

} // namespace velto
