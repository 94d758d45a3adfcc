#include "Platform/Linux/DesktopCheck.h"

#include "Platform/Linux/LinuxPlatform.h"
#include "Platform/Posix/Descriptor.h"

#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <sys/socket.h>
#include <sys/un.h>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr int kPatience = 2000; // ms, for each question on a bus

Support missing(const QString &reason)
{
    return {Support::State::Missing, reason};
}

/// Whether someone owns that name, or would be started for it.
bool offered(const QDBusConnection &bus, const QString &service)
{
    if (!bus.isConnected())
        return false;
    auto *names = bus.interface();
    names->setTimeout(kPatience);
    return names->isServiceRegistered(service).value() || names->activatableServiceNames().value().contains(service);
}

QVariant property(const QDBusConnection &bus, const QString &service, const QString &path, const QString &interface,
                  const QString &name)
{
    auto question = QDBusMessage::createMethodCall(service, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question.setArguments({interface, name});
    const QDBusReply<QDBusVariant> answer = bus.call(question, QDBus::Block, kPatience);
    return answer.isValid() ? answer.value().variant() : QVariant();
}

QString text(const char *words)
{
    return QCoreApplication::translate("DesktopCheck", words);
}

/// The name of the program at the other end of the Wayland display's socket; empty without one.
QString compositor()
{
    const QString display = qEnvironmentVariable("WAYLAND_DISPLAY");
    const QByteArray path = QFile::encodeName(QDir(qEnvironmentVariable("XDG_RUNTIME_DIR")).filePath(display));
    const Descriptor end(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (display.isEmpty() || !end || std::size_t(path.size()) >= sizeof address.sun_path)
        return {};
    std::copy(path.cbegin(), path.cend(), address.sun_path);
    ucred peer{};
    socklen_t size = sizeof peer;
    if (::connect(end.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
        || ::getsockopt(end.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0)
        return {};
    QFile name("/proc/%1/comm"_L1.arg(QString::number(peer.pid)));
    return name.open(QIODevice::ReadOnly) ? QString::fromUtf8(name.readAll()).trimmed() : QString();
}

QString desktop()
{
    QStringList words{qEnvironmentVariable("XDG_CURRENT_DESKTOP"), qEnvironmentVariable("XDG_SESSION_TYPE"), compositor()};
    words.removeAll(QString());
    return words.join(u", "_s);
}

QString displays()
{
    QStringList list;
    const auto screens = QGuiApplication::screens();
    for (const auto *screen : screens)
        list.append(QCoreApplication::translate("DesktopCheck", "%1 %2x%3 at scale %4")
                        .arg(screen->name())
                        .arg(screen->size().width())
                        .arg(screen->size().height())
                        .arg(screen->devicePixelRatio()));
    const QString way = QGuiApplication::platformName().startsWith("wayland"_L1) ? text("a Wayland layer surface")
        : qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")                         ? text("X11")
                                                                                 : text("X11 through XWayland");
    return way + u", Qt "_s + QString::fromLatin1(qVersion()) + u": "_s + list.join(u", "_s);
}

Support trayOn(const QDBusConnection &bus, const XcbServer &server)
{
    constexpr auto kWatcher = "org.kde.StatusNotifierWatcher"_L1;
    if (property(bus, kWatcher, u"/StatusNotifierWatcher"_s, kWatcher, u"IsStatusNotifierHostRegistered"_s).toBool())
        return {};
    if (server.selectionOwner(server.atom(XcbAtom::SystemTray)) != kNoWindow)
        return {};
    return missing(QCoreApplication::translate("DesktopCheck", "this desktop has no tray; right-click the strip for the menu"));
}

Support keyOn(const QDBusConnection &bus, LinuxPlatform &platform)
{
    if (!platform.keyByPortal) {
        platform.hotKey.registerHotKey([] {});
        return platform.hotKey.support().works()
            ? Support{}
            : Support{Support::State::Denied,
                      QCoreApplication::translate(
                          "DesktopCheck",
                          "Control-Alt-N is taken, by the Velto that runs or by another program; bind one to velto --search")};
    }
    const auto version = property(bus, u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s,
                                  u"org.freedesktop.portal.GlobalShortcuts"_s, u"version"_s);
    return version.toUInt() > 0
        ? Support{}
        : missing(QCoreApplication::translate(
            "DesktopCheck", "no portal gives programs a global key; bind one to velto --search in the desktop's settings"));
}

} // namespace

QList<Checked> checkDisplay(LinuxPlatform &platform)
{
    const auto key = keyOn(QDBusConnection::sessionBus(), platform);
    return {
        {text("display"), {}, displays()},
        {text("desktop"), {}, desktop()},
        {text("above full screen"), platform.panelWindow.support(), {}},
        {text("half-transparent"),
         platform.panelWindow.composited() ? Support{} : missing(text("no compositor runs; nothing moves slowly then")),
         {}},
        {text("global key"), key, key.works() && !platform.keyByPortal ? u"Control-Alt-N"_s : QString()},
        {text("window in front"), platform.applications.support(), {}},
        {text("copied links"), platform.clipboard.support(), {}},
    };
}

QList<Checked> checkSession(const XcbServer &server)
{
    const auto session = QDBusConnection::sessionBus();
    const bool login = offered(QDBusConnection::systemBus(), u"org.freedesktop.login1"_s);
    const bool saver = offered(session, u"org.freedesktop.ScreenSaver"_s) || offered(session, u"org.gnome.ScreenSaver"_s);
    return {
        {text("session bus"), session.isConnected() ? Support{} : missing(text("DBUS_SESSION_BUS_ADDRESS leads nowhere")), {}},
        {text("tray"), trayOn(session, server), {}},
        {text("keyring"),
         offered(session, u"org.freedesktop.secrets"_s)
             ? Support{}
             : missing(text("install a keyring, gnome-keyring for one; tokens can't be kept without")),
         {}},
        {text("lock signals"),
         login || saver ? Support{} : missing(text("neither logind nor a screen saver tells when the screen is locked")),
         login       ? u"logind"_s
             : saver ? text("a screen saver")
                     : QString()},
    };
}

} // namespace velto
