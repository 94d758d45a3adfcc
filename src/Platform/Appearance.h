#pragma once

#include <QObject>

namespace velto {

/// How the desktop wants ordinary windows to look. UI thread only.
class Appearance : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Begins to follow the desktop, if it doesn't yet; the application's font is set now and whenever the user changes it.
    /// Called before the first ordinary window; the strip has a look of its own.
    virtual void follow() = 0;
    /// Whether the user asked for dark windows, where the toolkit doesn't know by itself.
    virtual bool dark() const = 0;

Q_SIGNALS:
    /// Of what dark() says, or of the application's font.
    void changed();
};

} // namespace velto
