#pragma once

#include <wayland-client-core.h>

namespace velto {

/// The functions of libwayland-client that are used, loaded when first needed: under X11 that library is never in
/// memory (it costs 120 kB and 36 kB that are written to). The generated headers call them by the macros below; include this
/// file ahead of them.
struct WaylandLibrary {
    decltype(&wl_display_connect) displayConnect;
    decltype(&wl_display_disconnect) displayDisconnect;
    decltype(&wl_display_dispatch) displayDispatch;
    decltype(&wl_display_get_fd) displayGetFd;
    decltype(&wl_display_flush) displayFlush;
    decltype(&wl_display_roundtrip) displayRoundtrip;
    decltype(&wl_display_create_queue) displayCreateQueue;
    decltype(&wl_display_roundtrip_queue) displayRoundtripQueue;
    decltype(&wl_event_queue_destroy) eventQueueDestroy;
    decltype(&wl_proxy_add_listener) proxyAddListener;
    decltype(&wl_proxy_create_wrapper) proxyCreateWrapper;
    decltype(&wl_proxy_destroy) proxyDestroy;
    decltype(&wl_proxy_get_version) proxyGetVersion;
    decltype(&wl_proxy_marshal_flags) proxyMarshalFlags;
    decltype(&wl_proxy_set_queue) proxySetQueue;
    decltype(&wl_proxy_set_user_data) proxySetUserData;
    decltype(&wl_proxy_get_user_data) proxyGetUserData;
    decltype(&wl_proxy_wrapper_destroy) proxyWrapperDestroy;
};

/// Loads the library if it isn't yet. False without it, or if it lacks a function (it is older than 1.20).
bool loadWayland();
/// Only after loadWayland() said yes.
const WaylandLibrary &wayland();

} // namespace velto

// NOLINTBEGIN(cppcoreguidelines-macro-usage): the generated headers call these by name
#define wl_proxy_add_listener velto::wayland().proxyAddListener
#define wl_proxy_destroy velto::wayland().proxyDestroy
#define wl_proxy_get_version velto::wayland().proxyGetVersion
#define wl_proxy_marshal_flags velto::wayland().proxyMarshalFlags
#define wl_proxy_set_user_data velto::wayland().proxySetUserData
#define wl_proxy_get_user_data velto::wayland().proxyGetUserData
// NOLINTEND(cppcoreguidelines-macro-usage)
