#pragma once

#include "Platform/Keychain.h"

#include <atomic>
#include <memory>
#include <thread>

namespace velto {

/// The desktop's keyring, through libsecret. The library is loaded at the first use (linked, it cost 1.3 MB and 1.6 ms at
/// every start), and without it there are no secrets. Reading waits 3 seconds at most and never for the user: a locked
/// keyring gives nothing, and has its own dialog opened once, after which a later reading succeeds. Writing waits for
/// that dialog, up to 30 seconds.
class LibsecretKeychain final : public Keychain {
public:
    LibsecretKeychain();
    ~LibsecretKeychain() override;

    std::optional<QString> get(const QString &name) const override;
    void put(const QString &name, const std::optional<QString> &value) override;

private:
    class Unlocking;
    std::unique_ptr<Unlocking> m_unlocking;
};

} // namespace velto
