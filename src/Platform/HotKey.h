#pragma once

#include <functional>

namespace velto {

/// The one global key. UI thread only.
class HotKey {
public:
    HotKey() = default;
    HotKey(const HotKey &) = delete;
    HotKey &operator=(const HotKey &) = delete;
    virtual ~HotKey() = default;

    /// Has `action` called on the UI thread at each press of Control-Alt-N, whatever has the focus.
    /// False if the desktop doesn't offer that or the key is taken.
    virtual bool registerHotKey(std::function<void()> action) = 0;
};

} // namespace velto
