#pragma once

#include "Platform/Linux/X11/XcbServer.h"

#include <QPointer>
#include <QWindow>
#include <memory>

namespace velto {

class KeyboardWindow;

/// How the strip's window comes to the keyboard.
enum class FocusMethod : quint8 {
    InputFocus, ///< it takes the X server's input focus, as under a window manager for X11
    ManagedWindow, ///< a window beside it asks the desktop, for those that give an unmanaged window nothing (see KeyboardWindow)
};

/// Takes the keyboard for the strip's window, and gives it back to the window that had it. UI thread only.
class PanelKeyboard {
public:
    PanelKeyboard(XcbServer &server, FocusMethod method);
    ~PanelKeyboard();

    void adopt(QWindow *window) { m_window = window; }
    /// Takes the keyboard, or does so once the window is on screen.
    void take();
    void giveBack();
    /// The window has come on screen, or left it.
    void shown();
    void hidden();

private:
    xcb_window_t id() const;
    xcb_window_t focused() const;
    void giveFocus(xcb_window_t window);
    void leaveGroup(xcb_window_t window);
    void askDesktop();

    XcbServer &m_server;
    FocusMethod m_method;
    QPointer<QWindow> m_window;
    std::unique_ptr<KeyboardWindow> m_keyboard;
    xcb_window_t m_focusBefore = kNoWindow;
    bool m_wanted = false; ///< asked for before the window was on screen
};

} // namespace velto
