#pragma once

#include <QList>
#include <QObject>
#include <QRectF>
#include <QString>
#include <optional>

namespace velto {

/// One display, in device-independent pixels of the desktop's coordinate space, y going down.
struct Display {
    QString name;
    QRectF frame;
    double safeAreaTop = 0; ///< height of the camera housing; 0 without one
    std::optional<QRectF> auxiliaryTopLeft; ///< the usable area left of the housing
    std::optional<QRectF> auxiliaryTopRight; ///< the usable area right of it
    double statusBarThickness = 24; ///< height of the desktop's own panel at the top edge; 24 if there is none
    bool main = false;

    bool operator==(const Display &) const = default;
};

/// The displays in the desktop's order. No display at all is an ordinary state (suspend, docking). UI thread only.
class Displays : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    virtual QList<Display> all() const = 0;

Q_SIGNALS:
    /// A display was added, removed or moved, or its size, scale or work area changed.
    void changed();
};

} // namespace velto
