#pragma once

#include "Platform/Support.h"

#include <QObject>
#include <functional>

namespace velto {

/// The one global key. UI thread only.
class HotKey : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Calls `action` on the UI thread at each press of Control-Alt-N, or of the keys that the user chose instead, whatever
    /// has the focus. False if it is known by now that it won't be.
    virtual bool registerHotKey(std::function<void()> action) = 0;
    /// Whether the key works; may change at any time.
    virtual Support support() const = 0;
    /// The keys as the desktop calls them, if it let the user choose; else empty.
    virtual QString keys() const { return {}; }
    /// Whether the desktop would ask the user once more for a key that they declined.
    virtual bool canAskAgain() const { return false; }
    /// Has it ask.
    virtual void askAgain() { }

Q_SIGNALS:
    /// support() or keys() has changed.
    void changed();
};

} // namespace velto
