// How GoogleCalendar gets the tokens, keeps them fresh and gives them up.

#include "Core/Abandoned.h"
#include "Core/Prefs.h"
#include "Core/WorkError.h"
#include "Feeds/Calendar/GoogleCalendar.h"
#include "Feeds/Calendar/SignInListener.h"
#include "Platform/Clock.h"
#include "Platform/Keychain.h"
#include "Platform/Workspace.h"

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// A token with less life than this is renewed before it's used, in milliseconds.
constexpr qint64 kLeastLife = 60'000;

struct DeleteLater {
    void operator()(QObject *object) const { object->deleteLater(); }
};

} // namespace

void GoogleCalendar::connect()
{
    if (!configured()) {
        m_state.error = tr("Google OAuth is not configured in this build. Set GOOGLE_CLIENT_ID and GOOGLE_CLIENT_SECRET when "
                           "packaging.");
        publish();
        return;
    }
    m_state.connecting = true;
    m_state.error.reset();
    publish();
    connectTask();
}

QCoro::Task<> GoogleCalendar::connectTask()
{
    const std::weak_ptr life = m_life;
    std::optional<QString> failure;
    try {
        const GoogleTokens fresh = co_await authorize();
        stillWanted(life);
        const std::weak_ptr link = m_link;
        const bool kept = co_await saveTokens(fresh);
        stillWanted(link);
        if (!kept)
            throw WorkError{tr("The keyring couldn't keep the sign-in")};
        m_needs.prefs.setCalendarSource(Prefs::CalendarSource::Google);
        const std::optional<GoogleTokens> tokens = co_await loadTokens();
        stillWanted(link);
        co_await load(tokens);
    } catch (const Abandoned &) {
        // The account was forgotten meanwhile, or this object is gone.
    } catch (const WorkError &error) {
        failure = error.errorDescription;
    }
    if (life.expired())
        co_return;
    m_state.connecting = false;
    if (failure) {
        m_state.error = failure;
        m_state.answered = m_state.linked;
    }
    publish();
}

void GoogleCalendar::cancelConnecting()
{
    if (m_listener)
        m_listener->cancel();
}

QCoro::Task<GoogleCalendar::Grant> GoogleCalendar::askInBrowser()
{
    const std::weak_ptr life = m_life;
    const QString verifier = unguessable();
    const QString state = unguessable();
    // A child too: if this object goes, so does the listener, and the wait for the browser ends.
    const std::unique_ptr<SignInListener, DeleteLater> listener(new SignInListener(this));
    m_listener = listener.get();
    const QString redirect = u"http://127.0.0.1:%1/oauth2callback"_s.arg(listener->start());
    // Without a browser nobody would ever come back.
    if (!m_needs.workspace.open(authorizationUrl(m_needs.endpoints, m_needs.client, redirect, verifier, state)))
        throw WorkError{tr("Google sign-in failed")};
    const SignInListener::Answer answer = co_await listener->callback(state);
    stillWanted(life);
    if (answer.error)
        throw WorkError{*answer.error == "access_denied"_L1 ? tr("Google sign-in was declined in the browser")
                                                            : tr("Google sign-in failed")};
    if (!answer.code)
        throw Abandoned{};
    co_return Grant{*answer.code, verifier, redirect};
}

QCoro::Task<GoogleTokens> GoogleCalendar::authorize()
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

QCoro::Task<QString> GoogleCalendar::validAccessToken(std::optional<GoogleTokens> tokens)
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
    co_await saveTokens(renewed);
    co_return renewed.accessToken;
}

QCoro::Task<std::optional<GoogleTokens>> GoogleCalendar::loadTokens()
{
    const std::weak_ptr link = m_link;
    const std::optional<QString> record = co_await m_keychain.get(tokenKey);
    stillWanted(link);
    const std::optional<GoogleTokens> tokens = GoogleTokens::fromJson(record.value_or(QString()));
    m_state.locked = !record && m_needs.keychain.locked();
    m_state.linked = tokens.has_value() || (m_state.locked && m_state.linked);
    publish();
    stillWanted(link); // whoever heard of it may have ended it
    co_return tokens;
}

QCoro::Task<bool> GoogleCalendar::saveTokens(const GoogleTokens &tokens)
{
    return m_keychain.put(tokenKey, tokens.toJson());
}

QCoro::Task<> GoogleCalendar::lookTask()
{
    try {
        co_await loadTokens();
    } catch (const Abandoned &) {
    }
}

void GoogleCalendar::disconnect()
{
    // What is under way must not bring it back.
    m_link = std::make_shared<bool>(true);
    m_keychain.put(tokenKey, std::nullopt);
    m_state.calendars.clear();
    m_state.meetings.clear();
    m_state.error.reset();
    m_state.linked = false;
    m_state.answered = false;
    m_published = m_state;
    m_needs.prefs.setGoogleCalendarIDs({}); // they are the account's
    updateRows();
    if (m_needs.prefs.calendarSource() == Prefs::CalendarSource::Google)
        m_needs.prefs.setCalendarSource(Prefs::CalendarSource::Manual);
    Q_EMIT changed();
}

} // namespace velto
