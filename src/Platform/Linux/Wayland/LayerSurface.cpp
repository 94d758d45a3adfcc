#include "Platform/Linux/Wayland/LayerSurface.h"

#include "Platform/Linux/Wayland/NativeHandles.h"

#include <QPlatformSurfaceEvent>

namespace velto {

namespace {

constexpr auto kName = "velto";
constexpr quint32 kVersion = 4;
constexpr int kOverOthersRoom = -1; // a zone of -1: other panels' exclusive zones don't push it aside

} // namespace

LayerSurface::LayerSurface(WaylandServer &server, QWindow &window, zwlr_layer_shell_v1_layer layer, Place place, QObject *parent)
    : QObject(parent)
    , m_server(server)
    , m_window(&window)
    , m_layer(layer)
    , m_place(place)
    , m_shell(server.bind<zwlr_layer_shell_v1>(zwlr_layer_shell_v1_interface, kVersion))
{
    window.installEventFilter(this);
    window.setFlags(Qt::Window | Qt::BypassWindowManagerHint | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
}

LayerSurface::~LayerSurface()
{
    hide();
    if (m_shell && m_server.version(zwlr_layer_shell_v1_interface) >= 3)
        zwlr_layer_shell_v1_destroy(m_shell);
    else if (m_shell)
        wl_proxy_destroy(reinterpret_cast<wl_proxy *>(m_shell));
}

/// The toolkit may destroy a window unasked, such as at the program's end; the role must be destroyed before its surface.
bool LayerSurface::eventFilter(QObject *watched, QEvent *event)
{
    if (m_role && event->type() == QEvent::PlatformSurface
        && static_cast<QPlatformSurfaceEvent *>(event)->surfaceEventType() == QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed)
        zwlr_layer_surface_v1_destroy(std::exchange(m_role, nullptr));
    return QObject::eventFilter(watched, event);
}

wl_surface *LayerSurface::surface() const
{
    return m_role && m_window ? nativeSurface(m_window) : nullptr;
}

bool LayerSurface::show(QScreen *screen)
{
    if (m_role || !m_shell || !m_window || !screen)
        return m_role != nullptr;
    m_screen = screen;
    m_window->setScreen(screen);
    if (m_place == Place::WholeOutput)
        m_size = screen->size();
    m_window->resize(m_size);
    m_window->create();
    auto *surface = nativeSurface(m_window);
    if (!surface)
        return false;
    // On a queue of its own until the first size is settled, since nothing may be drawn before that.
    auto *queue = wayland().displayCreateQueue(m_server.display());
    auto *shell = static_cast<zwlr_layer_shell_v1 *>(wayland().proxyCreateWrapper(m_shell));
    wayland().proxySetQueue(reinterpret_cast<wl_proxy *>(shell), queue);
    m_role = zwlr_layer_shell_v1_get_layer_surface(shell, surface, nativeOutput(screen), m_layer, kName);
    wayland().proxyWrapperDestroy(shell);
    static constexpr zwlr_layer_surface_v1_listener kListener{configured, taken};
    zwlr_layer_surface_v1_add_listener(m_role, &kListener, this);
    apply();
    m_configured = false;
    wl_surface_commit(surface);
    while (m_role && !m_configured && m_server.wait(queue)) { }
    if (m_role)
        wayland().proxySetQueue(reinterpret_cast<wl_proxy *>(m_role), nullptr);
    wayland().eventQueueDestroy(queue);
    if (!m_configured)
        return false;
    m_window->show();
    return true;
}

void LayerSurface::hide()
{
    if (!m_role)
        return;
    // The role must be destroyed before its surface.
    zwlr_layer_surface_v1_destroy(std::exchange(m_role, nullptr));
    if (m_answer)
        wl_callback_destroy(std::exchange(m_answer, nullptr));
    m_resizing = false;
    if (!m_window)
        return;
    m_window->hide();
    m_window->destroy();
}

void LayerSurface::apply()
{
    const bool whole = m_place == Place::WholeOutput;
    const quint32 sides = ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT
        | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM | ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP;
    zwlr_layer_surface_v1_set_anchor(m_role, whole ? sides : quint32(ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP));
    zwlr_layer_surface_v1_set_exclusive_zone(m_role, kOverOthersRoom);
    zwlr_layer_surface_v1_set_size(m_role, whole ? 0 : quint32(m_size.width()), whole ? 0 : quint32(m_size.height()));
    setKeyboard(m_keyboard);
}

void LayerSurface::resize(QSize size)
{
    const QSize wanted = size.expandedTo(QSize(1, 1));
    if (wanted == m_size)
        return;
    m_size = wanted;
    if (!m_role)
        return;
    m_resizing = true;
    zwlr_layer_surface_v1_set_size(m_role, quint32(m_size.width()), quint32(m_size.height()));
    m_window->resize(m_size);
}

void LayerSurface::setKeyboard(Keyboard keyboard)
{
    m_keyboard = keyboard;
    if (!m_role)
        return;
    const auto value = keyboard == Keyboard::None         ? ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE
        : keyboard == Keyboard::OnDemand && hasOnDemand() ? ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_ON_DEMAND
                                                          : ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE;
    zwlr_layer_surface_v1_set_keyboard_interactivity(m_role, quint32(value));
    m_keyboardSent = false;
    if (m_configured)
        commit();
}

void LayerSurface::commit()
{
    if (auto *surface = this->surface(); surface && !m_resizing) {
        wl_surface_commit(surface);
        if (!std::exchange(m_keyboardSent, true))
            awaitKeyboard();
        m_server.flush();
    }
}

/// The compositor answers in order: what it does about the keyboard arrives before this answer.
void LayerSurface::awaitKeyboard()
{
    if (m_answer)
        wl_callback_destroy(m_answer);
    m_answer = wl_display_sync(m_server.display());
    static constexpr wl_callback_listener kListener{answered};
    wl_callback_add_listener(m_answer, &kListener, this);
}

void LayerSurface::answered(void *self, wl_callback *callback, uint32_t)
{
    auto *me = static_cast<LayerSurface *>(self);
    me->m_answer = nullptr;
    wl_callback_destroy(callback);
    Q_EMIT me->keyboardSettled();
}

void LayerSurface::configured(void *self, zwlr_layer_surface_v1 *role, uint32_t serial, uint32_t width, uint32_t height)
{
    auto *me = static_cast<LayerSurface *>(self);
    zwlr_layer_surface_v1_ack_configure(role, serial);
    const QSize given{width > 0 ? int(width) : me->m_size.width(), height > 0 ? int(height) : me->m_size.height()};
    const bool first = !std::exchange(me->m_configured, true);
    if (me->m_place == Place::WholeOutput)
        me->m_size = given;
    me->m_window->resize(given); // the output may be too small for the requested size
    if (given == me->m_size)
        me->m_resizing = false;
    // Sends what was requested while the picture was being drawn.
    if (!first)
        me->commit();
}

void LayerSurface::taken(void *self, zwlr_layer_surface_v1 *)
{
    auto *me = static_cast<LayerSurface *>(self);
    // Not within an event of the object that is destroyed.
    QMetaObject::invokeMethod(
        me,
        [me] {
            me->hide();
            Q_EMIT me->closed();
        },
        Qt::QueuedConnection);
}

} // namespace velto
