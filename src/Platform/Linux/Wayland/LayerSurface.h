#pragma once

#include "Platform/Linux/Wayland/WaylandServer.h"

#include <QPointer>
#include <QScreen>
#include <QSize>
#include <QWindow>

namespace velto {

/// A window of ours in the role of a layer surface (wlr-layer-shell): its place is settled with the compositor, not by
/// the toolkit, which gives such a window no role of its own (see prepareLayers()). UI thread only.
class LayerSurface final : public QObject {
    Q_OBJECT
public:
    enum class Place : quint8 { TopCentre, WholeOutput };
    enum class Keyboard : quint8 { None, OnDemand, Exclusive };

    /// `window` isn't shown yet, and is shown by show() alone.
    LayerSurface(WaylandServer &server, QWindow &window, zwlr_layer_shell_v1_layer layer, Place place, QObject *parent = nullptr);
    ~LayerSurface() override;

    /// Whether compositors can be asked at all.
    static bool offered(const WaylandServer &server) { return server.version(zwlr_layer_shell_v1_interface) > 0; }

    bool shown() const { return m_role != nullptr; }
    QScreen *screen() const { return m_role ? m_screen.data() : nullptr; }
    /// Brings the window up on that screen. Waits for the compositor once. False if the compositor is gone.
    bool show(QScreen *screen);
    /// Removes it, with all that the toolkit and the compositor hold for it.
    void hide();
    /// Takes effect together with the first frame of that size, so that no old frame is shown in a new place.
    void resize(QSize size);
    /// Takes effect at once. keyboardSettled() follows.
    void setKeyboard(Keyboard keyboard);
    Keyboard keyboard() const { return m_keyboard; }
    /// Whether a surface can have the keyboard without keeping others from it (version 4).
    bool hasOnDemand() const { return m_server.version(zwlr_layer_shell_v1_interface) >= 4; }
    /// Null while hidden.
    wl_surface *surface() const;
    /// Applies what was asked for, unless a frame that will carry it is on its way.
    void commit();

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The compositor took it off the screen, as it does when the output goes. It is hidden by now.
    void closed();
    /// The compositor has handled the last setKeyboard(): whoever was to get the keyboard by it has it.
    void keyboardSettled();

private:
    void apply();
    void awaitKeyboard();
    static void configured(void *self, zwlr_layer_surface_v1 *role, uint32_t serial, uint32_t width, uint32_t height);
    static void taken(void *self, zwlr_layer_surface_v1 *role);
    static void answered(void *self, wl_callback *callback, uint32_t serial);

    WaylandServer &m_server;
    QPointer<QWindow> m_window;
    zwlr_layer_shell_v1_layer m_layer;
    Place m_place;
    zwlr_layer_shell_v1 *m_shell = nullptr;
    zwlr_layer_surface_v1 *m_role = nullptr;
    QPointer<QScreen> m_screen;
    QSize m_size{1, 1};
    Keyboard m_keyboard = Keyboard::None;
    bool m_keyboardSent = true;
    wl_callback *m_answer = nullptr;
    bool m_configured = false;
    bool m_resizing = false; ///< the size asked for hasn't been configured yet
};

} // namespace velto
