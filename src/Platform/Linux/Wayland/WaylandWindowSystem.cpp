#include "Platform/Linux/Wayland/WaylandWindowSystem.h"

#include "Platform/Linux/Wayland/DataControlClipboard.h"
#include "Platform/Linux/Wayland/LayerPanelWindow.h"
#include "Platform/Linux/Wayland/NativeHandles.h"
#include "Platform/Linux/Wayland/ToplevelApplications.h"

namespace velto {

namespace {

class WaylandWindowSystem final : public WindowSystem {
public:
    explicit WaylandWindowSystem(Clock &clock)
        : m_panelWindow(m_server, clock)
        , m_applications(m_server, clock)
        , m_clipboard(m_server, clock)
    {
    }

    bool works() const { return m_server.exists() && LayerSurface::offered(m_server); }
    PanelWindow &panelWindow() override { return m_panelWindow; }
    Applications &applications() override { return m_applications; }
    Clipboard &clipboard() override { return m_clipboard; }
    void start() override
    {
        m_applications.start();
        m_clipboard.start();
    }

private:
    WaylandServer m_server;
    LayerPanelWindow m_panelWindow;
    ToplevelApplications m_applications;
    DataControlClipboard m_clipboard;
};

} // namespace

WaylandOffer askWayland()
{
    const auto globals = waylandGlobals();
    const quint32 version = globals.value(zwlr_layer_shell_v1_interface.name);
    return {!globals.isEmpty(), version > 0, version >= 4};
}

void prepareLayers()
{
    // Qt gives a window with BypassWindowManagerHint no role then.
    qputenv("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
}

std::unique_ptr<WindowSystem> makeWaylandWindowSystem(Clock &clock)
{
    auto system = std::make_unique<WaylandWindowSystem>(clock);
    if (!system->works())
        return nullptr;
    makePointerMouse();
    return system;
}

} // namespace velto
