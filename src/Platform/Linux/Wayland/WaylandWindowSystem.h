#pragma once

#include "Platform/Linux/WindowSystem.h"

#include <QByteArray>
#include <memory>

namespace velto {

class Clock;

/// For the time before there is an application object.
struct WaylandOffer {
    bool reachable = false; ///< a compositor answers
    bool layers = false; ///< and has a layer shell
    bool onDemand = false; ///< one that gives the keyboard on demand and takes it back (version 4)
};
/// Asks the compositor of the environment. Nothing for a build without Wayland.
WaylandOffer askWayland();
/// Makes the toolkit leave the role of the strip's window to us. Called before the application object is made.
void prepareLayers();
/// Once the application object is there: the programs that we start may have what was left out for us alone.
void layersPrepared();

/// Windows under Wayland. Null if the toolkit isn't on a compositor with a layer shell.
std::unique_ptr<WindowSystem> makeWaylandWindowSystem(Clock &clock);

/// Windows by `x11`, which is a guest of a Wayland desktop. What that guest isn't told, the window in front and what is
/// copied, comes from the compositor, as far as it reports them. Returns `x11` itself if it reports nothing.
std::unique_ptr<WindowSystem> makeGuestWindowSystem(Clock &clock, std::unique_ptr<WindowSystem> x11);

} // namespace velto
