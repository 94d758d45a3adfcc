#pragma once

#include <QObject>
#include <QString>
#include <optional>

namespace velto {

/// The user's secrets, each one text under one name. A failed look shows like a secret that was never stored; whether they are
/// locked away is told apart. Its functions are safe from any thread and may block for the keyring, but for locked() and
/// unlock().
class Keychain : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    virtual std::optional<QString> get(const QString &name) const = 0;
    /// Replaces the secret; nothing or an empty text erases it. Whether it is so now. The old one stays until the new one is
    /// kept.
    virtual bool put(const QString &name, const std::optional<QString> &value) = 0;

    /// Whether a secret that was looked for is there and locked away, as the last look or the keyring itself told.
    virtual bool locked() const { return false; }
    /// Opens the keyring's own dialog, unless it is open; returns at once.
    virtual void unlock() { }

Q_SIGNALS:
    /// From whatever thread found out.
    void lockedChanged();
};

} // namespace velto
