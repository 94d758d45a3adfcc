#pragma once

#include "Platform/Applications.h"
#include "Platform/Clipboard.h"
#include "Platform/PanelWindow.h"

namespace velto {

/// What depends on how windows get onto the screen. One of these for each way, chosen at the start: X11 and Wayland stand
/// beside each other, and nothing above knows which it is.
class WindowSystem {
public:
    WindowSystem() = default;
    WindowSystem(const WindowSystem &) = delete;
    WindowSystem &operator=(const WindowSystem &) = delete;
    virtual ~WindowSystem() = default;

    virtual PanelWindow &panelWindow() = 0;
    virtual Applications &applications() = 0;
    virtual Clipboard &clipboard() = 0;
    /// Begins to follow the desktop; called once the strip has been painted.
    virtual void start() = 0;
};

} // namespace velto
