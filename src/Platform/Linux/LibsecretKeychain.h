#pragma once

#include "Platform/Keychain.h"
#include "Platform/Linux/DBusOwners.h"

#include <QDBusConnection>
#include <atomic>
#include <memory>

namespace velto {

/// The desktop's keyring, through libsecret. The library is loaded at the first use (linked, it cost 1.3 MB and 1.6 ms at
/// every start), and without it there are no secrets. Reading waits 3 seconds at most and never for the user: a locked
/// keyring yields nothing; its own dialog is opened once, and again for unlock(). Writing waits for that dialog, up to
/// 30 seconds. Once it follows the session bus, it hears when another program unlocks the keyring
/// (https://specifications.freedesktop.org/secret-service-spec/latest/).
class LibsecretKeychain final : public Keychain {
    Q_OBJECT
public:
    LibsecretKeychain();
    ~LibsecretKeychain() override;

    void follow(const QDBusConnection &session);
    std::optional<QString> get(const QString &name) const override;
    bool put(const QString &name, const std::optional<QString> &value) override;
    bool locked() const override { return m_locked; }
    void unlock() override;

private:
    class Unlocking;
    Q_SLOT void collectionChanged(const QDBusMessage &signal);
    void setLocked(bool locked) const;

    QDBusConnection m_session;
    DBusOwners m_owners;
    mutable std::atomic_bool m_locked = false;
    std::unique_ptr<Unlocking> m_unlocking;
};

} // namespace velto
