#pragma once

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
};

} // namespace velto
