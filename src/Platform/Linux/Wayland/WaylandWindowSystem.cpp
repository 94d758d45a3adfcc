#include "Platform/Linux/Wayland/WaylandWindowSystem.h"

#include "Platform/Linux/Wayland/DataControlClipboard.h"
#include "Platform/Linux/Wayland/LayerPanelWindow.h"
#include "Platform/Linux/Wayland/NativeHandles.h"
#include "Platform/Linux/Wayland/ToplevelApplications.h"

#include <QOpenGLContext>

namespace velto {

namespace {

constexpr auto kWithoutOpenGl = "QT_WAYLAND_CLIENT_BUFFER_INTEGRATION";
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): set before the application object
bool openGlLeftOut = false;

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

class GuestWindowSystem final : public WindowSystem {
public:
    GuestWindowSystem(Clock &clock, std::unique_ptr<WindowSystem> x11)
        : m_x11(std::move(x11))
        , m_server(WaylandServer::Connection::Own)
        , m_applications(m_server, clock)
        , m_clipboard(m_server, clock)
    {
    }

    bool tellsWindows() const { return m_server.exists() && m_applications.support().works(); }
    bool tellsCopies() const { return m_server.exists() && m_clipboard.support().works(); }
    std::unique_ptr<WindowSystem> x11() && { return std::move(m_x11); }
    PanelWindow &panelWindow() override { return m_x11->panelWindow(); }
    Applications &applications() override { return tellsWindows() ? m_applications : m_x11->applications(); }
    Clipboard &clipboard() override { return tellsCopies() ? m_clipboard : m_x11->clipboard(); }
    void start() override
    {
        if (tellsWindows())
            m_applications.start();
        else
            m_x11->start();
        if (tellsCopies())
            m_clipboard.start();
    }

private:
    std::unique_ptr<WindowSystem> m_x11;
    WaylandServer m_server;
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
    // With this, Qt gives windows with BypassWindowManagerHint no role.
    qputenv("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
    // Velto draws nothing with OpenGL, and initialising it loads Mesa with LLVM: 13 MB.
    if (!qEnvironmentVariableIsSet(kWithoutOpenGl)) {
        qputenv(kWithoutOpenGl, "none");
        openGlLeftOut = true;
    }
}

std::unique_ptr<WindowSystem> makeGuestWindowSystem(Clock &clock, std::unique_ptr<WindowSystem> x11)
{
    auto guest = std::make_unique<GuestWindowSystem>(clock, std::move(x11));
    if (guest->tellsWindows() || guest->tellsCopies())
        return guest;
    return std::move(*guest).x11();
}

void layersPrepared()
{
    if (!std::exchange(openGlLeftOut, false))
        return;
    // Makes the toolkit look for OpenGL now, while the variable is set.
    QOpenGLContext::supportsThreadedOpenGL();
    qunsetenv(kWithoutOpenGl);
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
