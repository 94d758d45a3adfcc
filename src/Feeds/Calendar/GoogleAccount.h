#pragma once

#include "Core/KeychainLane.h"
#include "Feeds/Calendar/GoogleService.h"

#include <QObject>
#include <QPointer>
#include <memory>
#include <optional>
#include <qcoro/qcorotask.h>

namespace velto {

class Background;
class Clock;
class Http;
class Keychain;
class SignInListener;
class Workspace;

/// The user's Google account: the sign-in in the browser, and the tokens, which live in the keychain only and are renewed here.
/// Asks for read-only access to the calendar and nothing else. UI thread only; never blocks. The tasks throw WorkError, in words
/// for the user, and Abandoned once nobody waits for them any more.
class GoogleAccount : public QObject {
    Q_OBJECT
public:
    /// The name of the tokens in the keychain.
    static const QString tokenKey;
    /// Tells a waiting task whether it is still wanted: held weakly across each wait.
    using Life = std::shared_ptr<const bool>;

    /// What it uses; all of it outlives it.
    struct Needs {
        Clock &clock;
        Background &background;
        Http &http;
        Keychain &keychain;
        Workspace &workspace;
        GoogleClient client;
        GoogleEndpoints endpoints;
    };
    /// `linked` is what linked() says until the first look into the keychain.
    GoogleAccount(Needs needs, bool linked, QObject *parent = nullptr);
    /// Ends what is under way.
    ~GoogleAccount() override;

    bool configured() const { return m_needs.client.configured(); }
    /// Whether the keychain held tokens at the last lookup; a locked one changes nothing.
    bool linked() const { return m_linked; }
    /// Whether the keychain is locked; unlock() opens its dialog.
    bool locked() const { return m_locked; }
    void unlock();
    /// Ends with this object, and when the account is forgotten.
    const Life &link() const { return m_link; }

    /// Sends the user to Google's page, and waits without a time limit for the code it hands out.
    QCoro::Task<GoogleTokens> signIn();
    /// Gives up waiting for the browser.
    void cancelSignIn();
    /// What the keychain holds.
    QCoro::Task<std::optional<GoogleTokens>> load();
    /// Whether the keychain has stored them.
    QCoro::Task<bool> save(const GoogleTokens &tokens);
    /// A token that is valid for at least another minute; renewed and saved if necessary.
    QCoro::Task<QString> accessToken(std::optional<GoogleTokens> tokens);
    /// Ends what is under way and removes the tokens from the keychain.
    void forget();

Q_SIGNALS:
    void linkedChanged();

private:
    /// What the user agreed to in the browser.
    struct Grant {
        QString code;
        QString verifier;
        QString redirect;
    };

    QCoro::Task<Grant> askInBrowser();
    void setLinked(bool linked, bool locked);

    Needs m_needs;
    bool m_linked;
    bool m_locked = false;
    KeychainLane m_keychain;
    QPointer<SignInListener> m_listener; ///< while waiting for the browser
    Life m_life = std::make_shared<bool>(true); ///< ends with this object
    Life m_link = std::make_shared<bool>(true);
};

} // namespace velto
