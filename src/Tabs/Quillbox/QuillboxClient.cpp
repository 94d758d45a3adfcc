#include "Tabs/Quillbox/QuillboxClient.h"

#include "Core/Http.h"
#include "Platform/Background.h"

#include <QCoreApplication>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

const QString kSnapshotPath = u"/api/velto"_s;

QUrl under(QUrl base, const QString &path)
{
    QString folder = base.path(QUrl::FullyEncoded);
    while (folder.endsWith(u'/'))
        folder.chop(1);
    base.setPath(folder + path, QUrl::StrictMode);
    return base;
}

HubError noAnswer(const QString &host)
{
    return {HubError::kNoAnswer,
            QCoreApplication::translate("QuillboxClient",
                                        "Can't reach Quillbox at %1. Check your internet connection, or the address in Settings.")
                .arg(host)};
}

HubError refusal(const QString &host, int status)
{
    const auto said = [status](const QString &text) { return HubError{status, text}; };
    if (status == 401 || status == 403)
        return said(QCoreApplication::translate("QuillboxClient",
                                                "Quillbox at %1 didn't accept the token. Paste a new one in Settings → Quillbox.")
                        .arg(host));
    if (status == 404)
        return said(QCoreApplication::translate(
                        "QuillboxClient",
                        "The Quillbox hub at %1 is older than this version of Velto. Update the hub, then press Refresh.")
                        .arg(host));
    if (status >= 500 && status <= 599)
        return said(
            QCoreApplication::translate("QuillboxClient", "Quillbox at %1 had a problem (%2). Velto will try again in a minute.")
                .arg(host, QString::number(status)));
    return said(QCoreApplication::translate("QuillboxClient", "Quillbox at %1 answered %2. Velto will try again in a minute.")
                    .arg(host, QString::number(status)));
}

HubError notUnderstood(const QString &description)
{
    return {HubError::kNotUnderstood,
            QCoreApplication::translate(
                "QuillboxClient", "Quillbox sent data this version of Velto doesn't understand. Update Velto or the hub. (%1)")
                .arg(description)};
}

} // namespace

QuillboxClient::QuillboxClient(Http &http, Background &background, QuillboxMode::Selection selection,
                               std::chrono::milliseconds timeout)
    : m_http(http)
    , m_background(background)
    , m_selection(std::move(selection))
    , m_timeout(timeout)
{
}

QuillboxClient::Answer<QByteArray> QuillboxClient::request(QString path, QByteArray method, std::optional<QJsonObject> json,
                                                           QuillboxMode mode) const
{
    if (!mode.isHub())
        co_return HubError{HubError::kNotConnected,
                           QCoreApplication::translate("QuillboxClient", "Quillbox isn't connected. Connect it in Settings.")};
    HttpRequest request{under(mode.url(), path), method, {{"Authorization", "Bearer " + mode.token().toUtf8()}}};
    request.timeout = m_timeout;
    if (json) {
        request.headers.emplaceBack("Content-Type", "application/json");
        request.body = QJsonDocument(*json).toJson(QJsonDocument::Compact);
    }
    const QString host =
        mode.url().host().isEmpty() ? QCoreApplication::translate("QuillboxClient", "the hub") : mode.url().host();

    const HttpReply reply = co_await m_http.send(std::move(request));
    if (!reply.status)
        co_return noAnswer(host);
    if (*reply.status != 200)
        co_return refusal(host, *reply.status);
    co_return reply.body;
}

QuillboxClient::Answer<VeltoSnapshot> QuillboxClient::snapshot() const
{
    Background &background = m_background;
    const Result<QByteArray, HubError> body = co_await request(kSnapshotPath, "GET", {}, current());
    if (!body)
        co_return body.error();
    // Decoding a long list takes longer than a frame.
    auto decoding = inBackground(background, [json = *body] { return VeltoSnapshot::decode(json); });
    Result<VeltoSnapshot, QString> decoded = co_await decoding;
    if (!decoded)
        co_return notUnderstood(decoded.error());
    co_return *std::move(decoded);
}

QCoro::Task<std::optional<QString>> QuillboxClient::test(QUrl url, QString token) const
{
    const Result<QByteArray, HubError> body = co_await request(kSnapshotPath, "GET", {}, QuillboxMode::hub(url, token));
    if (body)
        co_return std::nullopt;
    co_return body.error().text;
}

} // namespace velto
