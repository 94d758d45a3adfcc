#include "Core/Http.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QHash>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <algorithm>
#include <coroutine>
#include <cstring>

using namespace std::chrono_literals;

namespace velto {

namespace {

constexpr int kWholeExchange = 4;
constexpr int kMostRedirects = 5;
constexpr std::chrono::seconds kProxyLimit{10};
constexpr std::chrono::duration<int> kIdleConnection{15};
constexpr std::chrono::seconds kLongestRest = 1h;

QString tr(const char *text)
{
    return QCoreApplication::translate("velto::Http", text);
}

QString originOf(const QUrl &url)
{
    const int usual = url.scheme() == QLatin1String("https") ? 443 : 80;
    return url.scheme() + QLatin1String("://") + url.host() + QLatin1Char(':') + QString::number(url.port(usual));
}

/// A body that can be read only once. The network layer repeats a request that got no answer, up to three times, unless it
/// can't rewind the body; so a request without a body gets an empty one.
class ReadOnce final : public QIODevice {
public:
    ReadOnce(QByteArray bytes, QObject *parent)
        : QIODevice(parent)
        , m_bytes(std::move(bytes))
    {
        open(ReadOnly | Unbuffered);
    }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return m_bytes.size() - m_read + QIODevice::bytesAvailable(); }

private:
    qint64 readData(char *to, qint64 most) override
    {
        const qint64 count = std::min<qint64>(most, m_bytes.size() - m_read);
        std::memcpy(to, m_bytes.constData() + m_read, std::size_t(count));
        m_read += count;
        return count > 0 || most == 0 ? count : -1;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

    QByteArray m_bytes;
    qint64 m_read = 0;
};

QNetworkRequest prepared(const HttpRequest &request, const std::optional<QSslConfiguration> &tls)
{
    QNetworkRequest result(request.url);
    if (tls)
        result.setSslConfiguration(*tls);
    // A line break at the end of a pasted token must not begin another header.
    for (const auto &[name, value] : request.headers)
        result.setRawHeader(name, QByteArray(value).replace('\r', "").replace('\n', ""));
    result.setTransferTimeout(int(request.timeout.count()));
    // Shorter than the other end keeps it: what is sent into a connection that is being closed isn't repeated.
    result.setAttribute(QNetworkRequest::ConnectionCacheExpiryTimeoutSecondsAttribute, kIdleConnection.count());
    // Followed in send(): Qt hands every header to the next host, Authorization too.
    result.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // Qt 6.4 to 6.8 crash when an HTTP/2 connection ends at the wrong moment.
    result.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    result.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    result.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    result.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    return result;
}

/// Whether the service answered and was understood, even if it didn't give what was asked for.
bool isAnswer(const QNetworkReply &reply)
{
    return reply.error() == QNetworkReply::NoError || reply.error() >= QNetworkReply::ContentAccessDenied;
}

/// Why there was no answer, in words that the user can act on.
QString faultOf(const QNetworkReply &reply)
{
    switch (reply.error()) {
    case QNetworkReply::OperationCanceledError: // nothing else cancels
    case QNetworkReply::TimeoutError:
        return tr("No answer came in time.");
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ContentReSendError: // the body had gone out already
        return tr("The connection ended without an answer.");
    case QNetworkReply::SslHandshakeFailedError:
        return tr("No secure connection could be made: %1").arg(reply.errorString());
    default:
        return reply.errorString();
    }
}

/// The request that a redirect leads to; nothing if it leads to another origin.
std::optional<HttpRequest> redirected(HttpRequest request, int status, const QByteArray &location)
{
    const bool redirects = status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
    const QUrl target = request.url.resolved(QUrl::fromEncoded(location));
    if (!redirects || location.isEmpty() || !target.isValid() || !target.userInfo().isEmpty()
        || originOf(target) != originOf(request.url))
        return std::nullopt;
    request.url = target;
    const bool asksForAPage = status == 303 || (status < 303 && request.method == "POST");
    if (asksForAPage && request.method != "HEAD") {
        request.method = "GET";
        request.body.reset();
        request.headers.removeIf([](const auto &header) { return header.first.toLower().startsWith("content-"); });
    }
    return request;
}

/// Resumes from within finished(), so that replies that ~Http() aborts also resume their coroutines; a queued resumption would
/// never run.
struct Finished {
    QNetworkReply *reply;

    bool await_ready() const { return reply->isFinished(); }
    void await_suspend(std::coroutine_handle<> waiting) const
    {
        QObject::connect(reply, &QNetworkReply::finished, reply, [waiting]() mutable { waiting.resume(); });
    }
    void await_resume() const { }
};

/// How long a busy service asks to be left alone; Retry-After holds seconds or a date.
std::chrono::seconds restAfter(int status, const QByteArray &retryAfter)
{
    if (retryAfter.isEmpty() || (status != 429 && status != 503))
        return 0s;
    bool isNumber = false;
    qint64 seconds = retryAfter.trimmed().toLongLong(&isNumber);
    if (!isNumber)
        seconds = QDateTime::currentDateTimeUtc().secsTo(
            QDateTime::fromString(QString::fromLatin1(retryAfter.trimmed()), Qt::RFC2822Date));
    return std::clamp<std::chrono::seconds>(std::chrono::seconds(seconds), 0s, kLongestRest);
}

/// Resumes once, from within the callback.
struct Found {
    Proxies *proxies;
    QUrl url;
    std::optional<QList<QNetworkProxy>> found = {};

    bool await_ready() const { return false; }
    void await_suspend(std::coroutine_handle<> waiting)
    {
        proxies->find(url, kProxyLimit, [this, waiting](const auto &answer) mutable {
            found = answer;
            waiting.resume();
        });
    }
    std::optional<QList<QNetworkProxy>> await_resume() { return std::move(found); }
};

} // namespace

QString whyNoJson(const QByteArray &body, const QString &parser)
{
    // A page for people, from a proxy or from a service that is down.
    return body.trimmed().startsWith('<') ? tr("a web page came in place of an answer")
                                          : tr("the answer can't be read: %1").arg(parser);
}

/// The proxies found for each origin, ready for when the network layer asks.
class Http::ProxyTable final : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override
    {
        return known.value(originOf(query.url()), {QNetworkProxy::NoProxy});
    }
    QHash<QString, QList<QNetworkProxy>> known;
};

// NOLINTNEXTLINE(performance-unnecessary-value-param)
Http::Http(QSslConfiguration tls)
    : m_tls(std::move(tls)) // NOLINT(performance-move-const-arg): newer Qt moves it
{
}

Http::Http(Background &background, Proxies::Find find)
    : m_proxies(std::make_unique<Proxies>(background, std::move(find)))
{
}

Http::~Http()
{
    m_proxies.reset();
    if (!m_manager)
        return;
    // Aborted, so that no coroutine waits for ever.
    const auto replies = m_manager->findChildren<QNetworkReply *>();
    for (QNetworkReply *reply : replies)
        reply->abort();
    // Deleted while the thread that they use still runs; what they have on it would leak.
    qDeleteAll(m_manager->findChildren<QNetworkReply *>(Qt::FindDirectChildrenOnly));
}

QNetworkAccessManager &Http::manager()
{
    if (!m_manager) {
        m_manager = std::make_unique<QNetworkAccessManager>();
        m_table = new ProxyTable;
        m_manager->setProxyFactory(m_table);
    }
    return *m_manager;
}

QNetworkReply *Http::start(const HttpRequest &request)
{
    QNetworkRequest prepared = velto::prepared(request, m_tls);
    const QByteArray bytes = request.body.value_or(QByteArray());
    prepared.setHeader(QNetworkRequest::ContentLengthHeader, bytes.size());
    prepared.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    auto *body = new ReadOnce(bytes, nullptr);
    QNetworkReply *reply = manager().sendCustomRequest(prepared, request.method, body);
    body->setParent(reply);
    return reply;
}

QCoro::Task<HttpReply> Http::send(HttpRequest request)
{
    const QString origin = originOf(request.url);
    if (const auto rest = m_rests.constFind(origin); rest != m_rests.cend() && !rest->until.hasExpired())
        co_return HttpReply{.status = rest->status};
    if (m_proxies) {
        Found search{m_proxies.get(), request.url};
        const auto proxies = co_await search;
        if (!proxies)
            co_return HttpReply{.fault = tr("The desktop's proxy settings gave no answer.")};
        manager();
        m_table->known.insert(origin, *proxies);
    }
    for (int redirects = 0;; ++redirects) {
        Exchange each = co_await exchange(request);
        const auto next = each.reply.status && redirects < kMostRedirects ? redirected(request, *each.reply.status, each.location)
                                                                          : std::nullopt;
        if (!next) {
            // The object may be gone; there is no status then.
            const std::chrono::seconds wanted = each.reply.status ? restAfter(*each.reply.status, each.retryAfter) : 0s;
            if (wanted > 0s)
                m_rests.insert(origin, {*each.reply.status, QDeadlineTimer(wanted)});
            co_return each.reply;
        }
        request = *next;
    }
}

QCoro::Task<Http::Exchange> Http::exchange(HttpRequest request)
{
    QNetworkReply *reply = start(request);
    Exchange result;
    bool tooMuch = false;
    const auto take = [&] {
        result.reply.body += reply->readAll();
        if (!tooMuch && result.reply.body.size() > request.maximum) {
            tooMuch = true;
            reply->abort();
        }
    };
    QObject::connect(reply, &QNetworkReply::readyRead, reply, take);
    QTimer::singleShot(request.timeout * kWholeExchange, reply, &QNetworkReply::abort);
    // A header has no limit of its own, and all of it is held in memory.
    QTimer::singleShot(request.timeout, reply, [reply] {
        if (!reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid())
            reply->abort();
    });
    co_await Finished{reply};

    // These alone: an aborted reply tells its connection by a signal, and one that isn't told reads on for ever.
    QObject::disconnect(reply, &QNetworkReply::readyRead, reply, nullptr);
    QObject::disconnect(reply, &QNetworkReply::finished, reply, nullptr);
    if (!tooMuch && reply->isOpen())
        take();
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!tooMuch && status.isValid() && isAnswer(*reply)) {
        result.reply.status = status.toInt();
        result.location = reply->rawHeader("Location");
        result.retryAfter = reply->rawHeader("Retry-After");
    } else {
        result.reply.body.clear();
        result.reply.fault = tooMuch ? tr("The answer was too large.") : faultOf(*reply);
    }
    reply->deleteLater();
    co_return result;
}

} // namespace velto
