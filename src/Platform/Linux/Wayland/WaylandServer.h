#pragma once

#include "Platform/Linux/Wayland/WaylandProtocols.h"

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QSocketNotifier>
#include <QStringList>
#include <algorithm>
#include <memory>

namespace velto {

/// What a compositor offers: the version of each interface, by its name. Connects for a moment, to `display` or, empty, to
/// the one of the environment. Nothing if it can't be reached. For the time before there is an application object.
QHash<QByteArray, quint32> waylandGlobals(const QByteArray &display = {});

/// A connection to the compositor, and what the compositor offers beyond what the toolkit asks of it: the toolkit's own
/// connection, or, where the toolkit goes through XWayland, one of ours. Without Wayland it offers nothing. UI thread only.
class WaylandServer final : public QObject {
    Q_OBJECT
public:
    enum class Connection : quint8 { Toolkit, Own };

    /// Needs the application object. Waits once for the compositor's list.
    explicit WaylandServer(Connection connection = Connection::Toolkit, QObject *parent = nullptr);
    ~WaylandServer() override;

    bool exists() const { return m_display != nullptr; }
    wl_display *display() const { return m_display; }
    wl_compositor *compositor() const { return m_compositor; }
    wl_seat *seat() const { return m_seat; }

    /// The version that the compositor has of an interface; 0 without it.
    quint32 version(const wl_interface &interface) const { return m_globals.value(interface.name).version; }
    /// Binds it, at most in that version; null if the compositor lacks it. Its events come through the event loop.
    template <typename Object> Object *bind(const wl_interface &interface, quint32 most) const
    {
        return static_cast<Object *>(bindAny(interface, most));
    }
    /// Waits until the compositor has answered all that was asked with the objects of `queue`. False if it is gone.
    bool wait(wl_event_queue *queue) const { return wayland().displayRoundtripQueue(m_display, queue) >= 0; }
    void flush() const { wayland().displayFlush(m_display); }

private:
    struct Global {
        quint32 name = 0;
        quint32 version = 0;
    };

    void dispatch();
    void *bindAny(const wl_interface &interface, quint32 most) const;
    static void added(void *self, wl_registry *registry, uint32_t name, const char *interface, uint32_t version);
    static void removed(void *self, wl_registry *registry, uint32_t name);

    Connection m_connection;
    wl_display *m_display = nullptr;
    std::unique_ptr<QSocketNotifier> m_notifier; ///< of a connection of ours
    wl_registry *m_registry = nullptr;
    wl_compositor *m_compositor = nullptr;
    wl_seat *m_seat = nullptr;
    QHash<QByteArray, Global> m_globals; ///< of several with one interface, as outputs are, the first
};

} // namespace velto
