#pragma once

#include "Platform/Linux/X11/PanelKeyboard.h"
#include "Platform/PanelWindow.h"

#include <QPointer>
#include <QRegion>
#include <QTimer>

namespace velto {

/// An override-redirect window: no window manager moves, hides, stretches or stacks it, so it is on every workspace and
/// above full-screen windows, and no click gives it the keyboard. It comes back to the top by itself when another window
/// becomes active or restacks, and once when it gets covered: never again and again against a window that does the same.
class XcbPanelWindow final : public PanelWindow {
    Q_OBJECT
public:
    explicit XcbPanelWindow(XcbServer &server, FocusMethod method = FocusMethod::InputFocus, QObject *parent = nullptr);

    void adopt(QWindow *window) override;
    void place(const QRect &frame) override;
    void show() override;
    void hide() override;
    void raise() override;
    std::optional<QPoint> pointer() const override;
    void takeFocus() override { m_keyboard.take(); }
    void returnFocus() override { m_keyboard.giveBack(); }
    bool composited() const override;
    bool keepsWidth() const override { return composited() && !m_guest; }
    void watchPresses(bool on) override;
    bool limitPresses(const QRegion &region) override;
    void setBlurBehind(const QList<QRect> &areas) override;
    void showBehind(QWindow *window, const QRect &frame) override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    xcb_window_t id() const;
    void windowMade();
    void resized();
    void rootChanged(xcb_atom_t property);
    void raiseSoon();
    void covered(xcb_window_t window);
    void pressed();
    void updateComposited();
    void writeBlur();

    XcbServer &m_server;
    PanelKeyboard m_keyboard;
    bool m_guest; ///< of a Wayland compositor
    QPointer<QWindow> m_window;
    QTimer m_resizing; ///< runs from a request to resize the window until it has the new size
    bool m_frameHeld = false; ///< was due while it ran
    bool m_raisePending = false;
    bool m_mayAnswerCover = true;
    mutable bool m_compositedKnown = false;
    mutable bool m_composited = false;
    QRegion m_taking; ///< presses; all of the window if empty
    QList<QRect> m_blur;
};

} // namespace velto
