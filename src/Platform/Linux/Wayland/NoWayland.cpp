// Replaces the other files of this folder in a build without Wayland.
#include "Platform/Linux/Wayland/WaylandWindowSystem.h"

namespace velto {

WaylandOffer askWayland()
{
    return {};
}

void prepareLayers() { }

void layersPrepared() { }

std::unique_ptr<WindowSystem> makeWaylandWindowSystem(Clock &)
{
    return nullptr;
}

std::unique_ptr<WindowSystem> makeGuestWindowSystem(Clock &, std::unique_ptr<WindowSystem> x11)
{
    return x11;
}

} // namespace velto
