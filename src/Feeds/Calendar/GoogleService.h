#pragma once

#include "Core/Http.h"

#include <QDateTime>
#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QUrl>
#include <optional>
#include <qcoro/qcorotask.h>

namespace velto {

/// Where Google's services are.
struct GoogleEndpoints {
    QUrl authorization = QUrl(QStringLiteral("https://accounts.google.com/o/oauth2/v2/auth"));
    QUrl token = QUrl(QStringLiteral("https://oauth2.googleapis.com/token"));
    QUrl calendar = QUrl(QStringLiteral("https://www.googleapis.com/calendar/v3"));
};

/// The identity under which Google knows this program.
struct GoogleClient {
    QString id;
    QString secret;

    bool configured() const { return !id.isEmpty() && !secret.isEmpty(); }
    /// As given to this build; empty in a build without one.
    static GoogleClient ofThisBuild();
};

/// What Google handed out for one account.
struct GoogleTokens {
    QString accessToken;
    QString refreshToken;
    QDateTime expiresAt;

    bool operator==(const GoogleTokens &) const = default;

    /// As text for the keychain, with the instant as seconds since 2001-01-01 UTC.
    QString toJson() const;
    /// Nothing if the record isn't complete.
    static std::optional<GoogleTokens> fromJson(const QString &text);
};

/// A new text that nobody can guess: 64 of the digits and upper-case letters A to F, from two random UUIDs.
QString unguessable();

/// The PKCE challenge for a verifier: RFC 7636, section 4.2, method S256.
QString codeChallenge(const QString &verifier);

/// Where the browser is sent: accounts.google.com. The redirect goes to a port of this machine, as for an installed program.
/// https://developers.google.com/identity/protocols/oauth2/native-app
QUrl authorizationUrl(const GoogleEndpoints &endpoints, const GoogleClient &client, const QString &redirect,
                      const QString &verifier, const QString &state);

/// Asks the token endpoint, oauth2.googleapis.com. Google keeps 100 refresh tokens for an account and a client; the oldest goes
/// silently, and the user signs in again. Throws WorkError.
/// https://developers.google.com/identity/protocols/oauth2/native-app#exchange-authorization-code
QCoro::Task<QJsonObject> tokenRequest(Http &http, QUrl endpoint, QMap<QString, QString> form);

/// The text under this name, if it's one that can be sent as a token.
std::optional<QString> tokenIn(const QJsonObject &reply, const QString &name);

/// When what this reply granted expires: in an hour if it doesn't say.
QDateTime expiryIn(const QJsonObject &reply, const QDateTime &now);

/// The user's list of calendars: its first page, of 100 entries.
QUrl calendarListUrl(const GoogleEndpoints &endpoints);

/// A calendar's meetings, 20 at most, from an hour before `now` to a day after.
QUrl eventsUrl(const GoogleEndpoints &endpoints, const QString &calendarID, const QDateTime &now);

/// Reads from the calendar service, www.googleapis.com. It takes 600 requests a minute from each user of a project, and
/// refuses more with 403 or 429. Throws WorkError.
/// https://developers.google.com/calendar/api/guides/quota
QCoro::Task<QByteArray> calendarGet(Http &http, QUrl url, QString token);

} // namespace velto
