#pragma once

#include "Core/Proxies.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QHash>
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

/// One request to a web service.
struct HttpRequest {
    QUrl url;
    QByteArray method = QByteArrayLiteral("GET");
    QList<std::pair<QByteArray, QByteArray>> headers = {};
    std::optional<QByteArray> body = {};
    /// How long the service may stay silent. The whole exchange may take four times as long.
    std::chrono::milliseconds timeout = std::chrono::seconds(60);
    /// The largest body that is accepted, in bytes.
    qint64 maximum = 16 * 1024 * 1024;
};

/// The outcome.
struct HttpReply {
    /// Nothing if there was no whole answer: no such host, no route, a broken certificate, silence, an early end, too much.
    std::optional<int> status = {};
    QByteArray body = {};
    /// If there is no status: why, in a sentence. Holds no header and no part of a body.
    QString fault = {};
};

/// Why a body isn't the JSON that was asked for, as a phrase; `parser` is what the parser says.
QString whyNoJson(const QByteArray &body, const QString &parser);

/// HTTP/1.1 for the readers of services: no cookies, no cache, no stored credentials. Redirects are followed within their origin
/// only; one that isn't followed is an answer with its own status. A request with a body is sent once, even if the service closes
/// without answering. A service that asks to be left alone for a while (Retry-After, RFC 9110) gets no request in that time: it
/// is answered with the same status, for up to an hour. UI thread only; the transfer itself runs elsewhere. Destroying it ends
/// what is under way, as a fault.
class Http {
public:
    /// Without a proxy, and with the system's TLS settings, which are looked for when they are needed: the library behind them
    /// is large.
    Http() = default;
    explicit Http(QSslConfiguration tls);
    /// Through the desktop's proxies; no request goes out before they are known.
    explicit Http(Background &background, Proxies::Find find = &QNetworkProxyFactory::systemProxyForQuery);
    Http(const Http &) = delete;
    Http &operator=(const Http &) = delete;
    virtual ~Http();

    /// Never throws. The caller checks after the co_await whether its own object still lives. Give the request a name and move
    /// it in: GCC 12 destroys an aggregate twice that is made within the co_await itself (`co_await send({.url = ...})`).
    virtual QCoro::Task<HttpReply> send(HttpRequest request);

private:
    class ProxyTable;
    struct Exchange {
        HttpReply reply;
        QByteArray location; ///< where a redirect leads
        QByteArray retryAfter; ///< how long the service wants to be left alone
    };
    QNetworkReply *start(const HttpRequest &request);
    QNetworkAccessManager &manager();
    QCoro::Task<Exchange> exchange(HttpRequest request);

    std::optional<QSslConfiguration> m_tls;
    std::unique_ptr<Proxies> m_proxies;
    ProxyTable *m_table = nullptr; ///< the manager's
    struct Rest {
        int status;
        QDeadlineTimer until;
    };
    QHash<QString, Rest> m_rests; ///< by origin
    std::unique_ptr<QNetworkAccessManager> m_manager; ///< made for the first request: a quiet strip needs none
};

} // namespace velto
