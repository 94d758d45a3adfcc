#pragma once

#include "Platform/Linux/X11/XcbServer.h"
#include "Platform/PanelWindow.h"

#include <QPointer>

namespace velto {

/// An override-redirect window: no window manager moves, hides, stretches or stacks it, so it stands on every workspace and
/// above full-screen windows, and no click gives it the keyboard. It comes back to the top by itself when another window
/// becomes active or restacks, and once when it gets covered: never again and again against a window that does the same.
class XcbPanelWindow final : public PanelWindow {
    Q_OBJECT
public:
    explicit XcbPanelWindow(XcbServer &server, QObject *parent = nullptr);

    void adopt(QWindow *window) override;
    void place(const QRect &frame) override;
    void raise() override;
    void takeFocus() override;
    void returnFocus() override;
    bool composited() const override;
    void watchPresses(bool on) override;
    void setBlurBehind(const QList<QRect> &areas) override;
    void showBehind(QWindow *window, const QRect &frame) override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    xcb_window_t id() const;
    void windowMade();
    void rootChanged(xcb_atom_t property);
    void raiseSoon();
    void covered(xcb_window_t window);
    void pressed();
    void updateComposited();
    void giveFocus(xcb_window_t window);
    xcb_window_t focused() const;
    void writeBlur();

    XcbServer &m_server;
    QPointer<QWindow> m_window;
    xcb_window_t m_focusBefore = kNoWindow;
    bool m_focusWanted = false; ///< asked for before the window was on screen
    bool m_raisePending = false;
    bool m_mayAnswerCover = true;
    mutable bool m_compositedKnown = false;
    mutable bool m_composited = false;
    QList<QRect> m_blur;
};

} // namespace velto
