#pragma once

#include <QObject>
#include <QString>

namespace velto {

class Background;
class Defaults;
class HookInstaller;
class Keychain;
class LoginItem;

/// The version, and the way to undo all that Velto did to this machine. UI thread only.
class AboutSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString version READ version CONSTANT FINAL)
public:
    /// All of it outlives this.
    struct Needs {
        HookInstaller &installer;
        LoginItem &loginItem;
        Background &background;
        Keychain &keychain;
        Defaults &defaults;
        QString version; ///< empty for a build that has none
    };
    explicit AboutSettings(const Needs &needs, QObject *parent = nullptr);

    QString version() const;

    /// Removes the hooks, the login item, the memory hub's token and all settings, then asks the program to end. The tokens of
    /// the other services stay.
    Q_INVOKABLE void reset();

Q_SIGNALS:
    void quitWanted();

private:
    Needs m_needs;
};

} // namespace velto
