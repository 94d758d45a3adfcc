#pragma once

#include "Platform/Applications.h"
#include "Platform/Linux/WatchedProcesses.h"
#include "Platform/Linux/X11/XcbServer.h"

#include <QHash>
#include <QList>

namespace velto {

/// The applications with a window, as the window manager lists them, and the screen recorders without one.
/// Knows nothing before start(); then follows the changes, and never polls.
class EwmhApplications final : public Applications {
    Q_OBJECT
public:
    /// `guest`: the server is a guest of a Wayland desktop, whose own windows it doesn't know.
    explicit EwmhApplications(XcbServer &server, Clock &clock, bool guest = false, QObject *parent = nullptr);

    void start();
    QStringList running() const override { return m_running; }
    QString frontmost() const override { return m_frontmost; }
    Support support() const override;

private:
    void rootChanged(xcb_atom_t property);
    void updateSoon();
    void update();
    void readClasses(const std::vector<quint32> &windows);
    void updateRunning();
    void updateFrontmost();

    XcbServer &m_server;
    bool m_guest;
    WatchedProcesses m_processes;
    QHash<xcb_window_t, QString> m_windows; ///< identifier of each window; empty until it has told its class
    QStringList m_running;
    QString m_frontmost;
    bool m_started = false;
    bool m_pending = false;
};

} // namespace velto
