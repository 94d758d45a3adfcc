#pragma once

#include "Core/KeychainLane.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>

namespace velto {

class Background;
class Keychain;
class Prefs;

/// The tokens of the work tools: what is stored, never the tokens themselves. UI thread only; waits for no
/// keyring.
class TokenSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString jiraSite READ jiraSite WRITE setJiraSite NOTIFY changed FINAL)
    Q_PROPERTY(QString jiraEmail READ jiraEmail WRITE setJiraEmail NOTIFY changed FINAL)
    /// The keyring is locked, so what is saved isn't known.
    Q_PROPERTY(bool locked READ locked NOTIFY changed FINAL)
    /// Grows with each change, so that a view asks isSaved() again.
    Q_PROPERTY(int revision READ revision NOTIFY changed FINAL)
public:
    /// All of it outlives this.
    TokenSettings(Prefs &prefs, Background &background, Keychain &keychain, QObject *parent = nullptr);
    ~TokenSettings() override;

    QString jiraSite() const;
    void setJiraSite(const QString &site);
    QString jiraEmail() const;
    void setJiraEmail(const QString &email);
    /// Stores the site and the address as typed, and reads again if one of them has changed.
    Q_INVOKABLE void readAnew();
    bool locked() const;
    Q_INVOKABLE void unlock();
    int revision() const { return m_revision; }

    /// How many of the tools have a token, as of the last look.
    int count() const { return int(m_saved.size()); }
    Q_INVOKABLE bool isSaved(const QString &name) const { return m_saved.contains(name); }
    /// What went wrong with the last attempt to save or remove it, in a sentence; empty if nothing.
    Q_INVOKABLE QString problem(const QString &name) const { return m_problems.value(name); }
    /// What is in its field. What the keyring didn't keep is there again.
    Q_INVOKABLE QString typed(const QString &name) const { return m_typed.value(name); }
    Q_INVOKABLE void type(const QString &name, const QString &token);
    /// Trims it, empties its field, stores it and reads again; nothing happens if nothing is left.
    Q_INVOKABLE void save(const QString &name, const QString &token);
    Q_INVOKABLE void remove(const QString &name);
    /// Asks the keyring; called when the pane is shown and when the user returns to it.
    Q_INVOKABLE void reread();

Q_SIGNALS:
    void changed();
    /// Every store is to read again, with what is stored now.
    void refreshWanted();

private:
    QCoro::Task<> put(QString name, std::optional<QString> token);
    QCoro::Task<> look();
    bool store();
    QString refusal() const;

    Prefs &m_prefs;
    Keychain &m_keyring;
    KeychainLane m_keychain;
    std::shared_ptr<const bool> m_life = std::make_shared<bool>(true); ///< ends with this object
    std::optional<QString> m_site; ///< while it is being typed
    std::optional<QString> m_email; ///< likewise
    QSet<QString> m_saved;
    QHash<QString, QString> m_typed;
    QHash<QString, QString> m_problems;
    int m_revision = 0;
};

} // namespace velto
