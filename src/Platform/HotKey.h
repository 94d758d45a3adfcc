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

    /// Has `action` called on the UI thread at each press of Control-Alt-N, or of the keys that the user chose instead, whatever
    /// has the focus. False if it won't be, as far as that is known by now.
    virtual bool registerHotKey(std::function<void()> action) = 0;
    /// What has become of it; may change at any time.
    virtual Support support() const = 0;
    /// The keys as the desktop calls them, if it let the user choose; else empty.
    virtual QString keys() const { return {}; }
    /// Whether the desktop would ask the user once more for a key that they declined.
    virtual bool canAskAgain() const { return false; }
    /// Has it ask.
    virtual void askAgain() { }

Q_SIGNALS:
    /// Of what support() or keys() say.
    void changed();
};

} // namespace velto
