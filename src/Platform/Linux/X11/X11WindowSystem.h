#pragma once

#include "Platform/Linux/WindowSystem.h"
#include "Platform/Linux/X11/EwmhApplications.h"
#include "Platform/Linux/X11/QtClipboard.h"
#include "Platform/Linux/X11/XcbPanelWindow.h"

namespace velto {

/// Windows under X11, and through XWayland.
class X11WindowSystem final : public WindowSystem {
public:
    X11WindowSystem(XcbServer &server, Clock &clock, FocusMethod method)
        : m_panelWindow(server, method)
        , m_applications(server, clock, method == FocusMethod::ManagedWindow)
        , m_clipboard(server, clock)
    {
    }

    PanelWindow &panelWindow() override { return m_panelWindow; }
    Applications &applications() override { return m_applications; }
    Clipboard &clipboard() override { return m_clipboard; }
    void start() override { m_applications.start(); }

private:
    XcbPanelWindow m_panelWindow;
    EwmhApplications m_applications;
    QtClipboard m_clipboard;
};

} // namespace velto
