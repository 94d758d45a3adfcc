#pragma once

class QScreen;
class QWindow;
struct wl_display;
struct wl_output;
struct wl_surface;

namespace velto {

/// The toolkit's own objects of the Wayland protocol. Qt 6.4 tells them by a private header only (6.5 has public names for
/// the display and a screen's output, none for a window's surface); this is the one file that includes it.
/// Null where there is none: another platform plugin, or a window without a surface.
wl_display *nativeDisplay();
wl_output *nativeOutput(QScreen *screen);
/// Gone with the window's hiding and its destroy().
wl_surface *nativeSurface(QWindow *window);

} // namespace velto
