#pragma once

#include "Platform/Linux/X11/XcbServer.h"
#include "Platform/PanelWindow.h"

#include <QPointer>
#include <memory>

namespace velto {

class KeyboardWindow;

/// How the window comes to the keyboard.
enum class KeyboardRoad : quint8 {
    InputFocus, ///< it takes the X server's input focus, as under a window manager for X11
    ManagedWindow, ///< a window beside it asks the desktop, for those that give an unmanaged window nothing (see KeyboardWindow)
};

/// An override-redirect window: no window manager moves, hides, stretches or stacks it, so it is on every workspace and
/// above full-screen windows, and no click gives it the keyboard. It comes back to the top by itself when another window
/// becomes active or restacks, and once when it gets covered: never again and again against a window that does the same.
class XcbPanelWindow final : public PanelWindow {
    Q_OBJECT
public:
    explicit XcbPanelWindow(XcbServer &server, KeyboardRoad road = KeyboardRoad::InputFocus, QObject *parent = nullptr);
    ~XcbPanelWindow() override;

    void adopt(QWindow *window) override;
    void place(const QRect &frame) override;
    void show() override;
    void hide() override;
    void raise() override;
    std::optional<QPoint> pointer() const override;
    void takeFocus() override;
    void returnFocus() override;
    bool composited() const override;
    void watchPresses(bool on) override;
    bool limitPresses(const QRegion &region) override;
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
    void askForKeyboard();
    void withdraw();
    xcb_window_t focused() const;
    void writeBlur();

    XcbServer &m_server;
    KeyboardRoad m_road;
    std::unique_ptr<KeyboardWindow> m_keyboard;
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
