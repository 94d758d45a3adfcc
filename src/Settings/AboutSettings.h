#pragma once

#include "Platform/Timer.h"

#include <QObject>
#include <QStringList>
#include <optional>

namespace velto {

class Background;
class Clock;
class Defaults;
class HookInstaller;
class Keychain;
class LoginItem;

/// The version, and the way to undo all that Velto did to this machine. UI thread only.
class AboutSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString version READ version CONSTANT FINAL)
    /// What the last reset couldn't remove, a sentence each.
    Q_PROPERTY(QStringList left READ left NOTIFY leftChanged FINAL)
public:
    /// All of it outlives this.
    struct Needs {
        HookInstaller &installer;
        LoginItem &loginItem;
        Background &background;
        Clock &clock;
        Keychain &keychain;
        Defaults &defaults;
        QString version; ///< empty for a build that has none
    };
    explicit AboutSettings(const Needs &needs, QObject *parent = nullptr);

    QString version() const;

    /// Removes the hooks, the login item, the memory hub's token and all settings, then asks the program to end; unless
    /// something couldn't be removed, or not within two seconds, which `left` then tells. The tokens of the other services stay.
    Q_INVOKABLE void reset();
    QStringList left() const { return m_left; }
    /// Asks the program to end with what is left.
    Q_INVOKABLE void quit();

Q_SIGNALS:
    void quitWanted();
    void leftChanged();

private:
    enum class Token : quint8 { Unknown, Gone, Stays };
    void settle();
    void finish();

    Needs m_needs;
    Token m_token = Token::Unknown;
    std::optional<QString> m_settings; ///< why they stay, or nothing; unknown at first
    TimerHandle m_limit; ///< while a reset is under way
    QStringList m_left;
};

} // namespace velto
