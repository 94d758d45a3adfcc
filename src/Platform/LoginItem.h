#pragma once

#include <QString>

namespace velto {

/// Whether the program starts when the user logs in. UI thread only.
class LoginItem {
public:
    LoginItem() = default;
    LoginItem(const LoginItem &) = delete;
    LoginItem &operator=(const LoginItem &) = delete;
    virtual ~LoginItem() = default;

    virtual bool enabled() const = 0;
    /// Turns it on or off and returns whether it is on now.
    virtual bool set(bool on) = 0;
    /// Why the last set() came to nothing, as a sentence; empty if it did what it was asked for.
    virtual QString problem() const { return {}; }
};

} // namespace velto
