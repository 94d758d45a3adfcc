#pragma once

class QScreen;
class QWindow;
struct wl_display;
struct wl_output;
struct wl_surface;

namespace velto {

/// The toolkit's own objects of the Wayland protocol. Qt 6.4 gives access to them by a private header only (6.5 has public names
/// for the display and a screen's output, none for a window's surface); NativeHandles.cpp is the one file that includes such
/// headers. Null where there is none: another platform plugin, or a window without a surface.
wl_display *nativeDisplay();
wl_output *nativeOutput(QScreen *screen);
/// Gone with the window's hiding and its destroy().
wl_surface *nativeSurface(QWindow *window);

/// Makes the pointer a mouse. Where the compositor knows gestures, the toolkit takes every press for a finger's on a touchpad,
/// and a finger has no buttons: each press would do what the left and the right one do. Needs the application object.
void makePointerMouse();

/// Makes the toolkit take `window` for the one that has the keyboard, until the window system says otherwise. For a window that
/// gets its keys through another one. On every platform plugin; in a build without private headers `window` gets no more than
/// the event, and its contents the focus only if no other window of the program had it.
void makeFocusWindow(QWindow &window);

} // namespace velto
