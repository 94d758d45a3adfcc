#include "Core/Http.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <coroutine>

namespace velto {

namespace {

constexpr int kWholeExchange = 4;

bool isPrivate(const HttpRequest &request)
{
    if (request.body)
        return true;
    return std::any_of(request.headers.begin(), request.headers.end(),
                       [](const auto &header) { return header.first.compare("Authorization", Qt::CaseInsensitive) == 0; });
}

QNetworkRequest prepared(const HttpRequest &request, const std::optional<QSslConfiguration> &tls)
{
    QNetworkRequest result(request.url);
    if (tls)
        result.setSslConfiguration(*tls);
    // A pasted token that ends in a line break doesn't begin another header.
    for (const auto &[name, value] : request.headers)
        result.setRawHeader(name, QByteArray(value).replace('\r', "").replace('\n', ""));
    result.setTransferTimeout(int(request.timeout.count()));
    // Qt hands every header to the next host, Authorization too.
    result.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                        isPrivate(request) ? QNetworkRequest::SameOriginRedirectPolicy
                                           : QNetworkRequest::NoLessSafeRedirectPolicy);
    result.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    result.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    result.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    return result;
}

/// The service answered and was understood, though not with what was asked for.
bool isAnswer(const QNetworkReply &reply)
{
    const QNetworkReply::NetworkError error = reply.error();
    const bool refusedRedirect = error == QNetworkReply::InsecureRedirectError || error == QNetworkReply::TooManyRedirectsError;
    return error == QNetworkReply::NoError || refusedRedirect || error >= QNetworkReply::ContentAccessDenied;
}

/// Resumes from within finished(), so that also the replies that are ended when Http goes come to their end; a queued
/// resumption wouldn't.
struct Finished {
    QNetworkReply *reply;

    bool await_ready() const { return reply->isFinished(); }
    void await_suspend(std::coroutine_handle<> waiting) const
    {
        QObject::connect(reply, &QNetworkReply::finished, reply, [waiting]() mutable { waiting.resume(); });
    }
    void await_resume() const { }
};

} // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param)
Http::Http(QSslConfiguration tls)
    : m_tls(std::move(tls)) // NOLINT(performance-move-const-arg): newer Qt moves it
{
}

Http::~Http()
{
    if (!m_manager)
        return;
    // Ended by hand, so that nothing waits for ever.
    const auto replies = m_manager->findChildren<QNetworkReply *>();
    for (QNetworkReply *reply : replies)
        reply->abort();
    // While the thread that they use still runs; what they left there would stay for ever.
    qDeleteAll(m_manager->findChildren<QNetworkReply *>(Qt::FindDirectChildrenOnly));
}

QNetworkReply *Http::start(const HttpRequest &request)
{
    if (!m_manager)
        m_manager = std::make_unique<QNetworkAccessManager>();
    const QNetworkRequest prepared = velto::prepared(request, m_tls);
    if (!request.body)
        return m_manager->sendCustomRequest(prepared, request.method);
    return m_manager->sendCustomRequest(prepared, request.method, *request.body);
}

QCoro::Task<HttpReply> Http::send(HttpRequest request)
{
    QNetworkReply *reply = start(request);
    HttpReply result;
    bool tooMuch = false;
    const auto take = [&] {
        result.body += reply->readAll();
        if (!tooMuch && result.body.size() > request.maximum) {
            tooMuch = true;
            reply->abort();
        }
    };
    QObject::connect(reply, &QNetworkReply::readyRead, reply, take);
    QTimer::singleShot(request.timeout * kWholeExchange, reply, &QNetworkReply::abort);
    co_await Finished{reply};

    reply->disconnect();
    if (!tooMuch && reply->isOpen())
        take();
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!tooMuch && status.isValid() && isAnswer(*reply))
        result.status = status.toInt();
    else {
        result.body.clear();
        result.fault = tooMuch ? QCoreApplication::translate("velto::Http", "The answer was too large.") : reply->errorString();
    }
    reply->deleteLater();
    co_return result;
}

} // namespace velto
