#include "Platform/Linux/Wayland/WaylandLibrary.h"

#include <dlfcn.h>

// The real names, for dlsym().
#undef wl_proxy_add_listener
#undef wl_proxy_destroy
#undef wl_proxy_get_version
#undef wl_proxy_marshal_flags
#undef wl_proxy_set_user_data
#undef wl_proxy_get_user_data

namespace velto {

namespace {

constexpr auto kLibrary = "libwayland-client.so.0";

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): filled once, on the UI thread, before anything calls it
WaylandLibrary functions{};

template <typename Function> bool resolve(void *library, const char *name, Function &function)
{
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

} // namespace

bool loadWayland()
{
    static const bool kLoaded = [] {
        void *library = dlopen(kLibrary, RTLD_LAZY | RTLD_LOCAL);
        auto &f = functions;
        return library && resolve(library, "wl_display_connect", f.displayConnect)
            && resolve(library, "wl_display_disconnect", f.displayDisconnect)
            && resolve(library, "wl_display_dispatch", f.displayDispatch) && resolve(library, "wl_display_get_fd", f.displayGetFd)
            && resolve(library, "wl_display_flush", f.displayFlush)
            && resolve(library, "wl_display_roundtrip", f.displayRoundtrip)
            && resolve(library, "wl_display_create_queue", f.displayCreateQueue)
            && resolve(library, "wl_display_roundtrip_queue", f.displayRoundtripQueue)
            && resolve(library, "wl_event_queue_destroy", f.eventQueueDestroy)
            && resolve(library, "wl_proxy_add_listener", f.proxyAddListener)
            && resolve(library, "wl_proxy_create_wrapper", f.proxyCreateWrapper)
            && resolve(library, "wl_proxy_destroy", f.proxyDestroy) && resolve(library, "wl_proxy_get_version", f.proxyGetVersion)
            && resolve(library, "wl_proxy_marshal_flags", f.proxyMarshalFlags)
            && resolve(library, "wl_proxy_set_queue", f.proxySetQueue)
            && resolve(library, "wl_proxy_set_user_data", f.proxySetUserData)
            && resolve(library, "wl_proxy_get_user_data", f.proxyGetUserData)
            && resolve(library, "wl_proxy_wrapper_destroy", f.proxyWrapperDestroy);
    }();
    return kLoaded;
}

const WaylandLibrary &wayland()
{
    return functions;
}

} // namespace velto
