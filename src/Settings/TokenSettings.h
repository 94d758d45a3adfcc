#pragma once

#include <QObject>
#include <QSet>
#include <QString>

namespace velto {

class Hub;
class Keychain;
class Prefs;

/// The tokens of the work tools: what is stored, never the tokens themselves. UI thread only.
class TokenSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString jiraSite READ jiraSite WRITE setJiraSite NOTIFY changed FINAL)
    Q_PROPERTY(QString jiraEmail READ jiraEmail WRITE setJiraEmail NOTIFY changed FINAL)
    /// Raised at each change, so that a view asks isSaved() again.
    Q_PROPERTY(int revision READ revision NOTIFY changed FINAL)
public:
    /// All of it outlives this.
    TokenSettings(Hub &hub, Prefs &prefs, Keychain &keychain, QObject *parent = nullptr);

    QString jiraSite() const;
    void setJiraSite(const QString &site);
    QString jiraEmail() const;
    void setJiraEmail(const QString &email);
    int revision() const { return m_revision; }

    Q_INVOKABLE bool isSaved(const QString &name) const { return m_saved.contains(name); }
    /// Trims and stores it; nothing happens if nothing is left.
    Q_INVOKABLE void save(const QString &name, const QString &token);
    Q_INVOKABLE void remove(const QString &name);
    /// Asks the keyring; called as the pane comes up.
    Q_INVOKABLE void reread();

Q_SIGNALS:
    void changed();

private:
    void afterChange();

    Hub &m_hub;
    Prefs &m_prefs;
    Keychain &m_keychain;
    QSet<QString> m_saved;
    int m_revision = 0;
};

} // namespace velto
