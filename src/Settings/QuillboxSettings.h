#pragma once

#include "Core/KeychainLane.h"

#include <QObject>
#include <QString>

namespace velto {

class Background;
class Keychain;
class Prefs;
class QuillboxSource;

/// The connection to a memory hub: tests an address and a token, and stores them once the hub has accepted them. Whether they are
/// used is decided in QuillboxMode. UI thread only; waits for no keyring.
class QuillboxSettings : public QObject {
    Q_OBJECT
    /// The connection that there is.
    Q_PROPERTY(QString status READ status NOTIFY changed FINAL)
    /// What is typed.
    Q_PROPERTY(QString url READ url WRITE setUrl NOTIFY changed FINAL)
    Q_PROPERTY(QString token READ token WRITE setToken NOTIFY changed FINAL)
    Q_PROPERTY(bool tokenSaved READ tokenSaved NOTIFY changed FINAL)
    Q_PROPERTY(bool testing READ testing NOTIFY changed FINAL)
    Q_PROPERTY(bool canTest READ canTest NOTIFY changed FINAL)
    Q_PROPERTY(bool canDisconnect READ canDisconnect NOTIFY changed FINAL)
    /// The outcome of the last test; empty before the first.
    Q_PROPERTY(QString result READ result NOTIFY changed FINAL)
    Q_PROPERTY(bool succeeded READ succeeded NOTIFY changed FINAL)
public:
    /// All of it outlives this.
    QuillboxSettings(QuillboxSource &source, Prefs &prefs, Background &background, Keychain &keychain, QObject *parent = nullptr);
    ~QuillboxSettings() override;

    QString status() const;
    const QString &url() const { return m_url; }
    void setUrl(const QString &url);
    const QString &token() const { return m_token; }
    void setToken(const QString &token);
    bool tokenSaved() const { return m_tokenSaved; }
    bool testing() const { return m_testing; }
    /// What is typed is an address, and no test is under way.
    bool canTest() const;
    /// Something is stored that could be forgotten.
    bool canDisconnect() const;
    const QString &result() const { return m_result; }
    bool succeeded() const { return m_succeeded; }

    /// Asks the hub, and stores the address and the token if it accepts them. Without a token the stored one is tested.
    Q_INVOKABLE void test();
    /// Forgets the address and the token, and the tokens of the work tools with them.
    Q_INVOKABLE void disconnectHub();
    /// Asks the keyring; called when the pane is shown and when the user returns to it.
    Q_INVOKABLE void reread();

Q_SIGNALS:
    void changed();

private:
    QUrl address() const;
    QString addressFault() const;
    QCoro::Task<> tryOut(QUrl url, QString token);
    QCoro::Task<> keep(QUrl url, QString token);
    QCoro::Task<> forget();
    QCoro::Task<> look();

    QuillboxSource &m_source;
    Prefs &m_prefs;
    KeychainLane m_keychain;
    std::shared_ptr<const bool> m_life = std::make_shared<bool>(true); ///< ends with this object
    QString m_url;
    QString m_token;
    bool m_tokenSaved = false;
    bool m_testing = false;
    int m_attempt = 0; ///< counts the tests, and whatever ends one
    QString m_result;
    bool m_succeeded = false;
};

} // namespace velto
