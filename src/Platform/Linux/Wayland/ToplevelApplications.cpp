#include "Platform/Linux/Wayland/ToplevelApplications.h"

#include "Platform/Linux/ApplicationNames.h"

namespace velto {

namespace {

using Toplevel = ToplevelApplications::Toplevel;

constexpr quint32 kWlrVersion = 3;
// From this version on windows are requested by UUID; before, by numbers, which may be reused.
constexpr quint32 kPlasmaVersion = 13;

Toplevel &of(void *data)
{
    return *static_cast<Toplevel *>(data);
}

void wlrApplication(void *data, zwlr_foreign_toplevel_handle_v1 *, const char *id)
{
    of(data).application = QString::fromUtf8(id);
}

void wlrState(void *data, zwlr_foreign_toplevel_handle_v1 *, wl_array *states)
{
    const auto *first = static_cast<const quint32 *>(states->data);
    const auto *last = first + states->size / sizeof(quint32);
    of(data).active = std::find(first, last, quint32(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED)) != last;
}

void wlrDone(void *data, zwlr_foreign_toplevel_handle_v1 *)
{
    of(data).owner->updateSoon();
}

void wlrClosed(void *data, zwlr_foreign_toplevel_handle_v1 *)
{
    of(data).owner->removed(&of(data));
}

constexpr zwlr_foreign_toplevel_handle_v1_listener kWlrToplevel{
    .title = [](void *, auto *, const char *) {},
    .app_id = wlrApplication,
    .output_enter = [](void *, auto *, wl_output *) {},
    .output_leave = [](void *, auto *, wl_output *) {},
    .state = wlrState,
    .done = wlrDone,
    .closed = wlrClosed,
    .parent = [](void *, auto *, zwlr_foreign_toplevel_handle_v1 *) {},
};

constexpr zwlr_foreign_toplevel_manager_v1_listener kWlrManager{
    .toplevel =
        [](void *data, zwlr_foreign_toplevel_manager_v1 *, zwlr_foreign_toplevel_handle_v1 *handle) {
            auto *toplevel = static_cast<ToplevelApplications *>(data)->added();
            toplevel->wlr = handle;
            zwlr_foreign_toplevel_handle_v1_add_listener(handle, &kWlrToplevel, toplevel);
        },
    .finished = [](void *, zwlr_foreign_toplevel_manager_v1 *) {},
};

constexpr org_kde_plasma_window_listener kPlasmaWindow{
    .title_changed = [](void *, auto *, const char *) {},
    .app_id_changed =
        [](void *data, org_kde_plasma_window *, const char *id) {
            of(data).application = QString::fromUtf8(id);
            of(data).owner->updateSoon();
        },
    .state_changed =
        [](void *data, org_kde_plasma_window *, uint32_t flags) {
            of(data).active = flags & ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE;
            of(data).owner->updateSoon();
        },
    .virtual_desktop_changed = [](void *, auto *, int32_t) {},
    .themed_icon_name_changed = [](void *, auto *, const char *) {},
    .unmapped = [](void *data, org_kde_plasma_window *) { of(data).owner->removed(&of(data)); },
    .initial_state = [](void *, auto *) {},
    .parent_window = [](void *, auto *, org_kde_plasma_window *) {},
    .geometry = [](void *, auto *, int32_t, int32_t, uint32_t, uint32_t) {},
    .icon_changed = [](void *, auto *) {},
    .pid_changed = [](void *, auto *, uint32_t) {},
    .virtual_desktop_entered = [](void *, auto *, const char *) {},
    .virtual_desktop_left = [](void *, auto *, const char *) {},
    .application_menu = [](void *, auto *, const char *, const char *) {},
    .activity_entered = [](void *, auto *, const char *) {},
    .activity_left = [](void *, auto *, const char *) {},
    .resource_name_changed = [](void *, auto *, const char *) {},
};

constexpr org_kde_plasma_window_management_listener kPlasmaManager{
    .show_desktop_changed = [](void *, auto *, uint32_t) {},
    .window = [](void *, auto *, uint32_t) {},
    .stacking_order_changed = [](void *, auto *, wl_array *) {},
    .stacking_order_uuid_changed = [](void *, auto *, const char *) {},
    .window_with_uuid =
        [](void *data, org_kde_plasma_window_management *manager, uint32_t, const char *uuid) {
            auto *toplevel = static_cast<ToplevelApplications *>(data)->added();
            toplevel->plasma = org_kde_plasma_window_management_get_window_by_uuid(manager, uuid);
            org_kde_plasma_window_add_listener(toplevel->plasma, &kPlasmaWindow, toplevel);
        },
};

void end(const Toplevel &toplevel)
{
    if (toplevel.wlr)
        zwlr_foreign_toplevel_handle_v1_destroy(toplevel.wlr);
    if (toplevel.plasma)
        org_kde_plasma_window_destroy(toplevel.plasma);
}

} // namespace

ToplevelApplications::ToplevelApplications(WaylandServer &server, Clock &clock, QObject *parent)
    : Applications(parent)
    , m_server(server)
    , m_processes(clock)
{
}

ToplevelApplications::~ToplevelApplications()
{
    for (const auto &[address, toplevel] : m_toplevels)
        end(*toplevel);
    if (m_wlr)
        zwlr_foreign_toplevel_manager_v1_destroy(m_wlr);
    if (m_plasma)
        org_kde_plasma_window_management_destroy(m_plasma);
}

void ToplevelApplications::start()
{
    if (m_wlr || m_plasma)
        return;
    connect(&m_processes, &WatchedProcesses::changed, this, &ToplevelApplications::updateSoon);
    m_processes.start();
    m_wlr = m_server.bind<zwlr_foreign_toplevel_manager_v1>(zwlr_foreign_toplevel_manager_v1_interface, kWlrVersion);
    if (m_wlr)
        zwlr_foreign_toplevel_manager_v1_add_listener(m_wlr, &kWlrManager, this);
    else if (m_server.version(org_kde_plasma_window_management_interface) >= kPlasmaVersion)
        m_plasma = m_server.bind<org_kde_plasma_window_management>(org_kde_plasma_window_management_interface, kPlasmaVersion);
    if (m_plasma)
        org_kde_plasma_window_management_add_listener(m_plasma, &kPlasmaManager, this);
    m_server.flush();
    updateSoon();
}

Support ToplevelApplications::support() const
{
    if (m_server.version(zwlr_foreign_toplevel_manager_v1_interface) > 0
        || m_server.version(org_kde_plasma_window_management_interface) >= kPlasmaVersion)
        return {};
    // KWin names this protocol to a program only if an installed .desktop file with its path asks for it.
    if (qgetenv("XDG_CURRENT_DESKTOP").split(':').contains("KDE")) {
        return {
            Support::State::Missing,
            tr("Plasma tells only installed programs which window is in front, so questions come to the strip while you are in "
               "a terminal too. Install Velto, and start the installed one.")};
    }
    return {Support::State::Missing,
            tr("This desktop doesn't tell which window is in front, so questions come to the strip while you are in a terminal "
               "too.")};
}

ToplevelApplications::Toplevel *ToplevelApplications::added()
{
    auto toplevel = std::make_unique<Toplevel>();
    toplevel->owner = this;
    auto *address = toplevel.get();
    m_toplevels.emplace(address, std::move(toplevel));
    return address;
}

void ToplevelApplications::removed(Toplevel *toplevel)
{
    end(*toplevel);
    m_toplevels.erase(toplevel);
    updateSoon();
}

/// Switching between two windows changes the state of both.
void ToplevelApplications::updateSoon()
{
    if (m_pending)
        return;
    m_pending = true;
    QMetaObject::invokeMethod(this, &ToplevelApplications::update, Qt::QueuedConnection);
}

void ToplevelApplications::update()
{
    m_pending = false;
    QStringList running = m_processes.running();
    QString frontmost;
    for (const auto &[address, toplevel] : m_toplevels) {
        const QString identifier = identifierForClass({}, toplevel->application);
        if (!identifier.isEmpty())
            running.append(identifier);
        if (toplevel->active)
            frontmost = identifier;
    }
    running.sort();
    running.removeDuplicates();
    if (std::exchange(m_running, running) != running)
        Q_EMIT runningChanged();
    if (std::exchange(m_frontmost, frontmost) != frontmost)
        Q_EMIT frontmostChanged();
}

} // namespace velto
