#pragma once

#include "Core/Prefs.h"

#include <QObject>
#include <QString>
#include <QVariant>

namespace velto {

class HotKey;
class Hub;
class LoginItem;
class TerminalApp;

/// What the General pane shows and changes. Every setter writes through at once. UI thread only.
class GeneralSettings : public QObject {
    Q_OBJECT
    /// What each picker offers: a list of {text, value}.
    Q_PROPERTY(QVariantList modes READ modes CONSTANT FINAL)
    Q_PROPERTY(QVariantList openModes READ openModes CONSTANT FINAL)
    Q_PROPERTY(QVariantList terminals READ terminals NOTIFY changed FINAL)
    Q_PROPERTY(int mode READ mode WRITE setMode NOTIFY changed FINAL)
    Q_PROPERTY(QString modeLine READ modeLine NOTIFY changed FINAL)
    Q_PROPERTY(int openMode READ openMode WRITE setOpenMode NOTIFY changed FINAL)
    Q_PROPERTY(QString shortcutText READ shortcutText NOTIFY changed FINAL)
    Q_PROPERTY(bool shortcutDeclined READ shortcutDeclined NOTIFY changed FINAL)
    Q_PROPERTY(bool quietWhileRecording READ quietWhileRecording WRITE setQuietWhileRecording NOTIFY changed FINAL)
    Q_PROPERTY(bool login READ login WRITE setLogin NOTIFY changed FINAL)
    /// Why the last wish about the login came to nothing; may be empty.
    Q_PROPERTY(QString loginProblem READ loginProblem NOTIFY changed FINAL)
    Q_PROPERTY(int terminal READ terminal WRITE setTerminal NOTIFY changed FINAL)
    Q_PROPERTY(bool peekOnFinish READ peekOnFinish WRITE setPeekOnFinish NOTIFY changed FINAL)
    /// As typed: a whole number of tokens, 0 for none. Anything else leaves the budget alone.
    Q_PROPERTY(QString dailyBudget READ dailyBudget WRITE setDailyBudget NOTIFY changed FINAL)
    Q_PROPERTY(QString dailyPriority READ dailyPriority WRITE setDailyPriority NOTIFY changed FINAL)
public:
    /// All of it outlives this.
    struct Needs {
        Hub &hub;
        Prefs &prefs;
        LoginItem &loginItem;
        TerminalApp &terminal;
        HotKey &hotKey;
    };
    explicit GeneralSettings(const Needs &needs, QObject *parent = nullptr);

    static QVariantList modes();
    static QVariantList openModes();
    /// Only those that are installed.
    QVariantList terminals() const;

    int mode() const;
    void setMode(int mode);
    QString modeLine() const { return lineFor(m_needs.prefs.mode()); }
    /// What a mode is for, in a few words.
    static QString lineFor(Prefs::Mode mode);
    int openMode() const;
    void setOpenMode(int mode);
    QString shortcutText() const;
    /// The user declined the key, and the desktop can ask them again.
    bool shortcutDeclined() const;
    Q_INVOKABLE void askForShortcut();
    bool quietWhileRecording() const;
    void setQuietWhileRecording(bool on);
    bool login() const { return m_login; }
    /// Why the last setLogin() failed, as a sentence; empty if it worked.
    QString loginProblem() const;
    /// Then shows the actual outcome, which may differ.
    void setLogin(bool on);
    int terminal() const;
    void setTerminal(int terminal);
    bool peekOnFinish() const;
    void setPeekOnFinish(bool on);
    QString dailyBudget() const;
    void setDailyBudget(const QString &text);
    QString dailyPriority() const;
    void setDailyPriority(const QString &text);

    /// Reads what may have changed elsewhere; called when the pane is shown and when the user returns to it.
    Q_INVOKABLE void reread();

Q_SIGNALS:
    void changed();

private:
    Needs m_needs;
    bool m_login;
};

} // namespace velto
