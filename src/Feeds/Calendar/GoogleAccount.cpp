#include "Feeds/Calendar/GoogleAccount.h"

#include "Core/Abandoned.h"
#include "Core/WorkError.h"
#include "Feeds/Calendar/SignInListener.h"
#include "Platform/Clock.h"
#include "Platform/Keychain.h"
#include "Platform/Workspace.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// In milliseconds. A token that expires sooner is renewed before it's used.
constexpr qint64 kLeastLife = 60'000;

struct DeleteLater {
    void operator()(QObject *object) const { object->deleteLater(); }
};

} // namespace

const QString GoogleAccount::tokenKey = u"Velto.googleCalendar.tokens"_s;

GoogleAccount::GoogleAccount(Needs needs, bool linked, QObject *parent)
    : QObject(parent)
    , m_needs(std::move(needs))
    , m_linked(linked)
    , m_keychain(m_needs.background, m_needs.keychain)
{
}

GoogleAccount::~GoogleAccount()
{
    // Coroutines that wait for the keychain or the browser resume now and see that it's over.
    m_life.reset();
    m_link.reset();
}

void GoogleAccount::setLinked(bool linked, bool locked)
{
    const bool different = linked != m_linked || locked != m_locked;
    m_linked = linked;
    m_locked = locked;
    if (different)
        Q_EMIT linkedChanged();
}

void GoogleAccount::unlock()
{
    m_needs.keychain.unlock();
}

void GoogleAccount::forget()
{
    // Requests under way must not bring it back.
    m_link = std::make_shared<bool>(true);
    m_keychain.put(tokenKey, std::nullopt);
    setLinked(false, false);
}

QCoro::Task<GoogleAccount::Grant> GoogleAccount::askInBrowser()
{
    const std::weak_ptr life = m_life;
    const QString verifier = unguessable();
    const QString state = unguessable();
    // A child as well: if this object is destroyed, so is the listener, and the wait for the browser ends.
    const std::unique_ptr<SignInListener, DeleteLater> listener(new SignInListener(this));
    m_listener = listener.get();
    const QString redirect = u"http://127.0.0.1:%1/oauth2callback"_s.arg(listener->start());
    // Without a browser no answer would ever come.
    if (!m_needs.workspace.open(authorizationUrl(m_needs.endpoints, m_needs.client, redirect, verifier, state)))
        throw WorkError{tr("Google sign-in failed")};
    const SignInAnswer answer = co_await listener->callback(state);
    stillWanted(life);
    if (answer.error)
        throw WorkError{*answer.error == "access_denied"_L1 ? tr("Google sign-in was declined in the browser")
                                                            : tr("Google sign-in failed")};
    if (!answer.code)
        throw Abandoned{};
    co_return Grant{*answer.code, verifier, redirect};
}

void GoogleAccount::cancelSignIn()
{
    if (m_listener)
        m_listener->cancel();
}

QCoro::Task<GoogleTokens> GoogleAccount::signIn()
{
    const std::weak_ptr life = m_life;
    const Grant grant = co_await askInBrowser();
    stillWanted(life);
    const QMap<QString, QString> form{
        {u"client_id"_s, m_needs.client.id},
        {u"client_secret"_s, m_needs.client.secret},
        {u"code"_s, grant.code},
        {u"code_verifier"_s, grant.verifier},
        {u"redirect_uri"_s, grant.redirect},
        {u"grant_type"_s, u"authorization_code"_s},
    };
    const QJsonObject reply = co_await tokenRequest(m_needs.http, m_needs.endpoints.token, form);
    stillWanted(life);
    const std::optional<QString> access = tokenIn(reply, u"access_token"_s);
    const std::optional<QString> refresh = tokenIn(reply, u"refresh_token"_s);
    if (!access || !refresh)
        throw WorkError{tr("Google did not return a refresh token")};
    co_return GoogleTokens{*access, *refresh, expiryIn(reply, m_needs.clock.wallTime())};
}

QCoro::Task<QString> GoogleAccount::accessToken(std::optional<GoogleTokens> tokens)
{
    if (!tokens)
        throw WorkError{tr("Google Calendar is not connected")};
    if (m_needs.clock.wallTime().msecsTo(tokens->expiresAt) > kLeastLife)
        co_return tokens->accessToken;

    const std::weak_ptr link = m_link;
    const QMap<QString, QString> form{
        {u"client_id"_s, m_needs.client.id},
        {u"client_secret"_s, m_needs.client.secret},
        {u"refresh_token"_s, tokens->refreshToken},
        {u"grant_type"_s, u"refresh_token"_s},
    };
    const QJsonObject reply = co_await tokenRequest(m_needs.http, m_needs.endpoints.token, form);
    stillWanted(link);
    const std::optional<QString> access = tokenIn(reply, u"access_token"_s);
    if (!access)
        throw WorkError{tr("Google sign-in expired; reconnect Calendar")};
    const GoogleTokens renewed{*access, tokens->refreshToken, expiryIn(reply, m_needs.clock.wallTime())};
    co_await save(renewed);
    co_return renewed.accessToken;
}

QCoro::Task<std::optional<GoogleTokens>> GoogleAccount::load()
{
    const std::weak_ptr link = m_link;
    const std::optional<QString> record = co_await m_keychain.get(tokenKey);
    stillWanted(link);
    const std::optional<GoogleTokens> tokens = GoogleTokens::fromJson(record.value_or(QString()));
    const bool locked = !record && m_needs.keychain.locked();
    setLinked(tokens.has_value() || (locked && m_linked), locked);
    stillWanted(link); // a slot may have ended it
    co_return tokens;
}

QCoro::Task<bool> GoogleAccount::save(const GoogleTokens &tokens)
{
    return m_keychain.put(tokenKey, tokens.toJson());
}

} // namespace velto
