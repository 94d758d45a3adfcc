#pragma once

#include <QObject>

namespace velto {

/// How the desktop wants ordinary windows to look. UI thread only.
class Appearance : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Begins to follow the desktop, if it doesn't yet: colours and font of the application are set, now and whenever the
    /// user changes them. Called before the first ordinary window; the strip has a look of its own.
    virtual void follow() = 0;
};

} // namespace velto
