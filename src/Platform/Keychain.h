#pragma once

#include <QObject>
#include <QString>
#include <optional>

namespace velto {

/// The user's secrets, each one text under one name. A failed lookup looks like a secret that was never stored; whether they are
/// locked is reported separately. Its functions are safe from any thread and may block for the keyring, except locked() and
/// unlock().
class Keychain : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    virtual std::optional<QString> get(const QString &name) const = 0;
    /// Replaces the secret; nothing or an empty text erases it. Returns whether that worked. The old one stays until the new one
    /// is stored.
    virtual bool put(const QString &name, const std::optional<QString> &value) = 0;

    /// Whether a secret that was looked up is there but locked, according to the last lookup or the keyring itself.
    virtual bool locked() const { return false; }
    /// Opens the keyring's own dialog unless it is already open; returns at once.
    virtual void unlock() { }

Q_SIGNALS:
    /// Emitted on whatever thread found out.
    void lockedChanged();
};

} // namespace velto
