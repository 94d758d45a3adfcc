#pragma once

#include <QObject>

namespace velto {

/// The user's desktop session. UI thread only; answers come from memory.
class Session : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// While it is locked, the program may show nothing.
    virtual bool locked() const = 0;

Q_SIGNALS:
    void lockedChanged();
    /// The machine has woken up: wall time has jumped.
    void woke();
};

} // namespace velto
