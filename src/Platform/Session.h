#pragma once

#include <QObject>

namespace velto {

/// The user's desktop session. UI thread only; answers come from memory.
class Session : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// While it is locked, nothing of the program may be on screen.
    virtual bool locked() const = 0;

Q_SIGNALS:
    void lockedChanged();
    /// The machine slept and is awake again: wall time has jumped.
    void woke();
};

} // namespace velto
