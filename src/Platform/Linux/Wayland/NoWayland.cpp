// Replaces the other files of this folder in a build without Wayland.
#include "Platform/Linux/Wayland/NativeHandles.h"
#include "Platform/Linux/Wayland/WaylandWindowSystem.h"

#include <QFocusEvent>
#include <QGuiApplication>
#include <QWindow>

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

void makeFocusWindow(QWindow &window)
{
    QFocusEvent event(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QGuiApplication::sendEvent(&window, &event);
}

} // namespace velto
