#pragma once

#include "Platform/Support.h"

#include <QList>
#include <QObject>
#include <QRect>
#include <optional>

class QRegion;
class QWindow;

namespace velto {

/// What the desktop does for the strip's window beyond what a plain window can: it is on every workspace, above all
/// others, and takes the keyboard only when asked to. UI thread only.
class PanelWindow : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Makes `window`, which isn't shown yet, such a window. Called once.
    virtual void adopt(QWindow *window) = 0;
    /// Moves and sizes it, in device-independent pixels.
    virtual void place(const QRect &frame) = 0;
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual void raise() = 0;
    /// Takes the keyboard, and remembers who had it.
    virtual void takeFocus() = 0;
    /// Gives the keyboard back, if the window still has it.
    virtual void returnFocus() = 0;
    /// Whether pixels may be half transparent: without a compositor the outline must be cut instead.
    virtual bool composited() const = 0;
    /// Whether the window should be as wide as it ever gets, all the time: where a change of its width shows, for a frame, its
    /// old picture in the wrong place. limitPresses() works then.
    virtual bool keepsWidth() const { return false; }
    /// Where the pointer is, in the window's own coordinates, which may lie outside of it. Nothing if the desktop doesn't say.
    virtual std::optional<QPoint> pointer() const { return {}; }
    /// Whether it is above full-screen windows on every workspace.
    virtual Support support() const { return {}; }
    /// Turns pressedElsewhere() on or off. Wanted while the panel is open or has the keyboard; off, it costs nothing.
    virtual void watchPresses(bool) { }
    /// Has presses outside of the region, in the window's own device-independent pixels, reach what is behind; an empty one takes
    /// them all. False if only the window's mask can do that.
    virtual bool limitPresses(const QRegion &) { return false; }
    /// Asks the compositor to blur what lies behind these parts of the window, in device-independent pixels; none ends it.
    virtual void setBlurBehind(const QList<QRect> &) { }
    /// Shows another window of ours behind all windows, on every workspace and without a frame.
    virtual void showBehind(QWindow *, const QRect &) { }

Q_SIGNALS:
    void compositedChanged();
    /// The user pressed a mouse button outside the window and its menus. Only while watchPresses() is on.
    void pressedElsewhere();
};

} // namespace velto
