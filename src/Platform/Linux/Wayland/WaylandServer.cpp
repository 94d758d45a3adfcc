#include "Platform/Linux/Wayland/WaylandServer.h"

#include "Platform/Linux/Wayland/NativeHandles.h"

namespace velto {

namespace {

void globalSeen(void *list, wl_registry *, uint32_t, const char *interface, uint32_t version)
{
    static_cast<QHash<QByteArray, quint32> *>(list)->insert(interface, version);
}

void globalGone(void *, wl_registry *, uint32_t) { }

} // namespace

QHash<QByteArray, quint32> waylandGlobals(const QByteArray &display)
{
    QHash<QByteArray, quint32> globals;
    if (!loadWayland())
        return globals;
    auto *connection = wayland().displayConnect(display.isEmpty() ? nullptr : display.constData());
    if (!connection)
        return globals;
    static constexpr wl_registry_listener kListener{globalSeen, globalGone};
    auto *registry = wl_display_get_registry(connection);
    wl_registry_add_listener(registry, &kListener, &globals);
    wayland().displayRoundtrip(connection);
    wl_registry_destroy(registry);
    wayland().displayDisconnect(connection);
    return globals;
}

WaylandServer::WaylandServer(Connection connection, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
{
    if (!loadWayland())
        return;
    m_display = connection == Connection::Toolkit ? nativeDisplay() : wayland().displayConnect(nullptr);
    if (!m_display)
        return;
    auto *queue = wayland().displayCreateQueue(m_display);
    auto *display = static_cast<wl_display *>(wayland().proxyCreateWrapper(m_display));
    wayland().proxySetQueue(reinterpret_cast<wl_proxy *>(display), queue);
    m_registry = wl_display_get_registry(display);
    wayland().proxyWrapperDestroy(display);
    static constexpr wl_registry_listener kListener{added, removed};
    wl_registry_add_listener(m_registry, &kListener, this);
    wait(queue);
    // From here on the toolkit's event loop dispatches the events of the registry and of everything bound.
    wayland().proxySetQueue(reinterpret_cast<wl_proxy *>(m_registry), nullptr);
    wayland().eventQueueDestroy(queue);
    if (m_connection == Connection::Own) {
        m_notifier = std::make_unique<QSocketNotifier>(wayland().displayGetFd(m_display), QSocketNotifier::Read);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, &WaylandServer::dispatch);
    }
    m_compositor = bind<wl_compositor>(wl_compositor_interface, 1);
    m_seat = bind<wl_seat>(wl_seat_interface, 1);
}

WaylandServer::~WaylandServer()
{
    if (!m_display)
        return;
    if (m_seat)
        wl_seat_destroy(m_seat);
    if (m_compositor)
        wl_compositor_destroy(m_compositor);
    wl_registry_destroy(m_registry);
    m_notifier.reset();
    if (m_connection == Connection::Own)
        wayland().displayDisconnect(m_display);
}

/// Called when there is something to read, so it doesn't block.
void WaylandServer::dispatch()
{
    if (wayland().displayDispatch(m_display) < 0)
        m_notifier->setEnabled(false); // the compositor is gone; the toolkit notices that too
    else
        flush();
}

void *WaylandServer::bindAny(const wl_interface &interface, quint32 most) const
{
    const auto global = m_globals.constFind(interface.name);
    if (global == m_globals.cend())
        return nullptr;
    return wl_registry_bind(m_registry, global->name, &interface, std::min(global->version, most));
}

void WaylandServer::added(void *self, wl_registry *, uint32_t name, const char *interface, uint32_t version)
{
    auto &globals = static_cast<WaylandServer *>(self)->m_globals;
    if (!globals.contains(interface))
        globals.insert(interface, {name, version});
}

void WaylandServer::removed(void *self, wl_registry *, uint32_t name)
{
    auto &globals = static_cast<WaylandServer *>(self)->m_globals;
    globals.removeIf([name](const auto &entry) { return entry.value().name == name; });
}

} // namespace velto
