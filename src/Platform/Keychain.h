#pragma once

#include <QString>
#include <optional>

namespace velto {

/// The user's secrets, each one text under one name. Every failure looks like a secret that was never stored.
/// Safe from any thread; may block for the keyring.
class Keychain {
public:
    Keychain() = default;
    Keychain(const Keychain &) = delete;
    Keychain &operator=(const Keychain &) = delete;
    virtual ~Keychain() = default;

    virtual std::optional<QString> get(const QString &name) const = 0;
    /// Replaces the secret; nothing or an empty text erases it.
    virtual void put(const QString &name, const std::optional<QString> &value) = 0;
};

} // namespace velto
