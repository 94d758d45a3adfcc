#pragma once

#include <QPoint>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// An X server of the test's own with a window manager. Create it before the application object.
class VirtualDesktop {
public:
    VirtualDesktop();
    ~VirtualDesktop();

    /// Whether its programs are installed.
    bool works() const { return m_works; }
    /// Uses the keyboard and the mouse, with xdotool.
    static bool act(const QStringList &what);

private:
    QTemporaryDir m_home;
    QProcess m_server;
    QProcess m_manager;
    bool m_works = false;
};
