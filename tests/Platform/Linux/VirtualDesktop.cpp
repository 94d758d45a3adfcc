#include "VirtualDesktop.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

VirtualDesktop::VirtualDesktop()
{
    for (const auto &program : {u"Xvfb"_s, u"openbox"_s, u"xdotool"_s}) {
        if (QStandardPaths::findExecutable(program).isEmpty())
            return;
    }
    // The server chooses a free number and prints it once it is ready.
    m_server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1280x800x24"_s, u"-nolisten"_s, u"tcp"_s});
    if (!m_server.waitForStarted() || !m_server.waitForReadyRead())
        return;
    qputenv("DISPLAY", ':' + m_server.readAllStandardOutput().trimmed());
    qputenv("HOME", m_home.path().toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", m_home.path().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qunsetenv("WAYLAND_DISPLAY");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    m_manager.start(u"openbox"_s, {});
    m_works = m_manager.waitForStarted();
}

VirtualDesktop::~VirtualDesktop()
{
    for (auto *process : {&m_manager, &m_server}) {
        process->terminate();
        if (process->state() != QProcess::NotRunning && !process->waitForFinished(3000))
            process->kill();
        process->waitForFinished();
    }
}

bool VirtualDesktop::act(const QStringList &what)
{
    return QProcess::execute(u"xdotool"_s, what) == 0;
}
