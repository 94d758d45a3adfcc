#pragma once

#include <QObject>

namespace velto {

/// How the desktop wants ordinary windows to look. UI thread only.
class Appearance : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Starts to follow the desktop, if it hasn't yet; sets the application's font now and whenever the user changes it.
    /// Called before the first ordinary window; the strip has its own look.
    virtual void follow() = 0;
    /// Whether the user asked for dark windows, where the toolkit doesn't know by itself.
    virtual bool dark() const = 0;

Q_SIGNALS:
    /// dark() or the application's font has changed.
    void changed();
};

} // namespace velto
