#pragma once

#include "Platform/Applications.h"
#include "Platform/Linux/WatchedProcesses.h"
#include "Platform/Linux/Wayland/WaylandServer.h"

#include <memory>
#include <unordered_map>

namespace velto {

/// The applications with a window, as the compositor lists them by wlr-foreign-toplevel or, KWin's own way, by its window
/// management, and the screen recorders without one. Knows nothing before start(); then follows the changes, and never polls.
class ToplevelApplications final : public Applications {
    Q_OBJECT
public:
    ToplevelApplications(WaylandServer &server, Clock &clock, QObject *parent = nullptr);
    ~ToplevelApplications() override;

    void start();
    QStringList running() const override { return m_running; }
    QString frontmost() const override { return m_frontmost; }
    Support support() const override;

    /// One window; its address is what the compositor's events carry.
    struct Toplevel {
        ToplevelApplications *owner = nullptr;
        zwlr_foreign_toplevel_handle_v1 *wlr = nullptr;
        org_kde_plasma_window *plasma = nullptr;
        QString application;
        bool active = false;
    };
    /// For the listeners: a window that came, changed or went.
    Toplevel *added();
    void removed(Toplevel *toplevel);
    void updateSoon();

private:
    void update();

    WaylandServer &m_server;
    zwlr_foreign_toplevel_manager_v1 *m_wlr = nullptr;
    org_kde_plasma_window_management *m_plasma = nullptr;
    std::unordered_map<Toplevel *, std::unique_ptr<Toplevel>> m_toplevels;
    WatchedProcesses m_processes;
    QStringList m_running;
    QString m_frontmost;
    bool m_pending = false;
};

} // namespace velto
