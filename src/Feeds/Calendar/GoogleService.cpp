#include "Feeds/Calendar/GoogleService.h"

#include "Core/WorkError.h"
#include "GoogleClientOfThisBuild.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QJsonDocument>
#include <QUrlQuery>
#include <QUuid>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// 2001-01-01 00:00:00 UTC, in seconds since 1970.
constexpr qint64 kEpoch = 978'307'200;
constexpr double kUsualLife = 3600;
/// In seconds. Further away than any real expiry, and near enough to calculate with.
constexpr double kFarAway = 1e11;
constexpr qint64 kLargestTokenReply = 1024 * 1024;

QString failedSignIn()
{
    return QCoreApplication::translate("velto::GoogleCalendar", "Google sign-in failed");
}

QString encoded(const QString &text, const QByteArray &alsoPlain = {})
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text, alsoPlain));
}

QByteArray formOf(const QMap<QString, QString> &values)
{
    // What a URL's query may contain, less what has a meaning in a form.
    const QByteArray plain = "!$'()*,;:@/?";
    QStringList pairs;
    for (auto it = values.begin(); it != values.end(); ++it)
        pairs += encoded(it.key(), plain) + u'=' + encoded(it.value(), plain);
    return pairs.join(u'&').toUtf8();
}

QUrl withPath(QUrl url, const QString &encodedPath)
{
    url.setPath(url.path(QUrl::FullyEncoded) + encodedPath, QUrl::StrictMode);
    return url;
}

QString internetTime(const QDateTime &instant)
{
    return instant.toUTC().toString(u"yyyy-MM-dd'T'HH:mm:ss'Z'"_s);
}

} // namespace

GoogleClient GoogleClient::ofThisBuild()
{
    return {QString::fromLatin1(kGoogleClientID), QString::fromLatin1(kGoogleClientSecret)};
}

QString GoogleTokens::toJson() const
{
    const double seconds = double(expiresAt.toMSecsSinceEpoch()) / 1000 - kEpoch;
    const QJsonObject record{{u"accessToken"_s, accessToken}, {u"refreshToken"_s, refreshToken}, {u"expiresAt"_s, seconds}};
    return QString::fromUtf8(QJsonDocument(record).toJson(QJsonDocument::Compact));
}

std::optional<GoogleTokens> GoogleTokens::fromJson(const QString &text)
{
    const QJsonObject record = QJsonDocument::fromJson(text.toUtf8()).object();
    const std::optional<QString> access = tokenIn(record, u"accessToken"_s);
    const std::optional<QString> refresh = tokenIn(record, u"refreshToken"_s);
    const QJsonValue seconds = record.value("expiresAt"_L1);
    if (!access || !refresh || !seconds.isDouble() || std::abs(seconds.toDouble()) > kFarAway)
        return std::nullopt;
    const qint64 instant = std::llround((seconds.toDouble() + kEpoch) * 1000);
    return GoogleTokens{*access, *refresh, QDateTime::fromMSecsSinceEpoch(instant, Qt::UTC)};
}

QString unguessable()
{
    const auto one = [] { return QUuid::createUuid().toString(QUuid::Id128).toUpper(); };
    return one() + one();
}

QString codeChallenge(const QString &verifier)
{
    const QByteArray digest = QCryptographicHash::hash(verifier.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

QUrl authorizationUrl(const GoogleEndpoints &endpoints, const GoogleClient &client, const QString &redirect,
                      const QString &verifier, const QString &state)
{
    QUrlQuery query;
    const auto add = [&query](const QString &name, const QString &value) { query.addQueryItem(name, encoded(value)); };
    add(u"client_id"_s, client.id);
    add(u"redirect_uri"_s, redirect);
    add(u"response_type"_s, u"code"_s);
    add(u"scope"_s, u"https://www.googleapis.com/auth/calendar.readonly"_s);
    add(u"access_type"_s, u"offline"_s);
    add(u"prompt"_s, u"consent"_s);
    add(u"code_challenge"_s, codeChallenge(verifier));
    add(u"code_challenge_method"_s, u"S256"_s);
    add(u"state"_s, state);
    QUrl url = endpoints.authorization;
    url.setQuery(query);
    return url;
}

QCoro::Task<QJsonObject> tokenRequest(Http &http, QUrl endpoint, QMap<QString, QString> form)
{
    HttpRequest request{endpoint, "POST", {{"Content-Type", "application/x-www-form-urlencoded"}}, formOf(form)};
    request.maximum = kLargestTokenReply;
    const HttpReply reply = co_await http.send(std::move(request));
    if (!reply.status)
        throw WorkError{reply.fault};
    if (*reply.status != 200)
        throw WorkError{failedSignIn()};
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(reply.body, &error);
    if (error.error != QJsonParseError::NoError)
        throw WorkError{whyNoJson(reply.body, error.errorString())};
    if (!document.isObject())
        throw WorkError{failedSignIn()};
    co_return document.object();
}

std::optional<QString> tokenIn(const QJsonObject &reply, const QString &name)
{
    // RFC 6749, appendix A.12, less the blank: what a header may contain.
    const QString text = reply.value(name).toString();
    const bool sendable = std::ranges::all_of(text, [](QChar c) { return c > u' ' && c <= u'~'; });
    return sendable && !text.isEmpty() ? std::optional(text) : std::nullopt;
}

QDateTime expiryIn(const QJsonObject &reply, const QDateTime &now)
{
    const double seconds = std::clamp(reply.value("expires_in"_L1).toDouble(kUsualLife), -kFarAway, kFarAway);
    return now.toUTC().addMSecs(std::llround(seconds * 1000));
}

QUrl calendarListUrl(const GoogleEndpoints &endpoints)
{
    return withPath(endpoints.calendar, u"/users/me/calendarList"_s);
}

QUrl eventsUrl(const GoogleEndpoints &endpoints, const QString &calendarID, const QDateTime &now)
{
    QUrl url = withPath(endpoints.calendar, "/calendars/"_L1 + encoded(calendarID, "!$&'()*+,;=:@/") + "/events"_L1);
    QUrlQuery query;
    query.addQueryItem(u"timeMin"_s, internetTime(now.addSecs(-3600)));
    query.addQueryItem(u"timeMax"_s, internetTime(now.addSecs(86'400)));
    query.addQueryItem(u"singleEvents"_s, u"true"_s);
    query.addQueryItem(u"orderBy"_s, u"startTime"_s);
    query.addQueryItem(u"maxResults"_s, u"20"_s);
    url.setQuery(query);
    return url;
}

QCoro::Task<QByteArray> calendarGet(Http &http, QUrl url, QString token)
{
    HttpRequest request{url, "GET", {{"Authorization", "Bearer " + token.toLatin1()}}};
    HttpReply reply = co_await http.send(std::move(request));
    if (!reply.status)
        throw WorkError{reply.fault};
    if (*reply.status != 200)
        throw WorkError{QCoreApplication::translate("velto::GoogleCalendar", "Google Calendar could not be refreshed")};
    co_return std::move(reply.body);
}

} // namespace velto
