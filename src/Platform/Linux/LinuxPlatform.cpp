#include "Platform/Linux/LinuxPlatform.h"

#include "Platform/Linux/PortalHotKey.h"
#include "Platform/Linux/Wayland/WaylandWindowSystem.h"
#include "Platform/Linux/X11/X11WindowSystem.h"
#include "Platform/Linux/X11/XcbHotKey.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QStandardPaths>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr auto kPlatformVariable = "QT_QPA_PLATFORM";
constexpr auto kX11Variable = "DISPLAY";
constexpr auto kWaylandVariable = "WAYLAND_DISPLAY";
// The names of the toolkit's plugins.
constexpr auto kX11 = "xcb";
constexpr auto kWayland = "wayland";
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): set before the application object, and a message handler is
// a plain function
bool platformChosenHere = false;
QtMessageHandler handlerBefore = nullptr;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

/// The message handler while the application object is created. If no display can be opened, the toolkit calls qFatal() and
/// aborts; it gets only as far as this. Trying the display beforehand would cost a second connection at every start.
void sayAndEnd(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type == QtFatalMsg) {
        const bool wayland = qgetenv(kPlatformVariable) == kWayland;
        const auto sentence =
            QCoreApplication::translate("velto", "Velto needs a graphical session: the display %1 can't be opened.")
                .arg(qEnvironmentVariable(wayland ? kWaylandVariable : kX11Variable));
        std::fprintf(stderr, "%s\n", qPrintable(sentence));
        std::_Exit(EXIT_FAILURE);
    }
    // The messages that lead up to it say the same less clearly.
    if (!QByteArrayView(context.category).startsWith("qt.qpa") && handlerBefore)
        handlerBefore(type, context, message);
}

void choose(const char *plugin, bool forUsAlone)
{
    qputenv(kPlatformVariable, plugin);
    platformChosenHere = forUsAlone;
    handlerBefore = qInstallMessageHandler(&sayAndEnd);
}

/// Whether this session's compositor can be asked. An inherited socket could be used only once.
bool onWayland()
{
    return !qEnvironmentVariableIsEmpty(kWaylandVariable) && qEnvironmentVariableIsEmpty("WAYLAND_SOCKET");
}

/// One sentence on why there can be no Wayland window; nothing if there can. A layer shell that doesn't take the keyboard back
/// (KWin 5) is good enough only for a user who insists.
std::optional<QString> whyNotWayland(bool insists)
{
    const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + u"/platforms"_s);
    const auto names = plugins.entryList(QDir::Files);
    if (std::ranges::none_of(names, [](const QString &name) { return name.startsWith("libqwayland"_L1); }))
        return QCoreApplication::translate("velto", "Qt's plugin for Wayland is missing (the package qt6-wayland).");
    const auto offer = askWayland();
    if (!offer.reachable)
        return QCoreApplication::translate("velto", "The Wayland display %1 can't be reached.")
            .arg(qEnvironmentVariable(kWaylandVariable));
    if (!offer.layers)
        return QCoreApplication::translate("velto", "This desktop's compositor has no layer shell.");
    if (!offer.onDemand && !insists)
        return QCoreApplication::translate("velto", "This desktop's layer shell doesn't take the keyboard back.");
    return std::nullopt;
}

/// Under Wayland, X11 windows are guests: the X server's input focus isn't the user's keyboard.
FocusMethod focusMethod()
{
    return onWayland() ? FocusMethod::ManagedWindow : FocusMethod::InputFocus;
}

std::unique_ptr<WindowSystem> makeWindowSystem(XcbServer &server, Clock &clock)
{
    if (QGuiApplication::platformName().startsWith(QLatin1StringView(kWayland)))
        if (auto system = makeWaylandWindowSystem(clock))
            return system;
    auto x11 = std::make_unique<X11WindowSystem>(server, clock, focusMethod());
    if (onWayland() && QGuiApplication::platformName() == QLatin1StringView(kX11))
        return makeGuestWindowSystem(clock, std::move(x11));
    return x11;
}

/// A portal goes by the first call on a connection for who calls, and on the one that all share the toolkit's come first. Without
/// a name the desktop can't say in its settings whose key it is.
QDBusConnection portalBus()
{
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("velto-portal"));
}

std::unique_ptr<HotKey> makeHotKey(XcbServer &server, Defaults &defaults)
{
    // Through XWayland a key can be grabbed, but is heard only while an X11 window has the keyboard.
    if (onWayland())
        return std::make_unique<PortalHotKey>(defaults, QGuiApplication::desktopFileName(), &portalBus);
    return std::make_unique<XcbHotKey>(server);
}

QString configurationFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}

} // namespace

std::optional<QString> prepareGraphics(const QString &wanted)
{
    // A fractional scale such as 1.5 is used as it is, not rounded.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const auto chosen = qgetenv(kPlatformVariable);
    const bool elsewhere = !chosen.isEmpty() && !chosen.startsWith(kX11) && !chosen.startsWith(kWayland);
    if (elsewhere)
        return std::nullopt;
    const QString display = wanted.isEmpty() ? qEnvironmentVariable("VELTO_DISPLAY") : wanted;
    if (!display.isEmpty() && display != u"x11"_s && display != QLatin1StringView(kWayland))
        return QCoreApplication::translate("velto", "Velto knows the displays x11 and wayland, and not \"%1\".").arg(display);
    const bool x11 = !qEnvironmentVariableIsEmpty(kX11Variable);
    if (!x11 && !onWayland())
        return QCoreApplication::translate("velto",
                                           "Velto needs a graphical session: neither DISPLAY nor WAYLAND_DISPLAY is set.");
    const bool x11Wanted = display.isEmpty() ? chosen.startsWith(kX11) : display == u"x11"_s;
    if (!x11Wanted && (onWayland() || !display.isEmpty())) {
        auto obstacle = whyNotWayland(!display.isEmpty() || !x11);
        if (!obstacle) {
            prepareLayers();
            choose(kWayland, chosen.isEmpty());
            return std::nullopt;
        }
        if (!display.isEmpty())
            return obstacle;
        if (!x11)
            return *obstacle + u' '
                + QCoreApplication::translate("velto", "Velto goes through XWayland then, and DISPLAY isn't set.");
    }
    choose(kX11, chosen.isEmpty());
    return std::nullopt;
}

LinuxPlatform::LinuxPlatform(Clock &clock, Files &files, Defaults &defaults, const Places &places)
    : windows(makeWindowSystem(server, clock))
    , displays(server)
    , panelWindow(windows->panelWindow())
    , applications(windows->applications())
    , clipboard(windows->clipboard())
    , keyByPortal(onWayland())
    , ownHotKey(makeHotKey(server, defaults))
    , hotKey(*ownHotKey)
    , statusItem(server)
    , loginItem(files, configurationFolder(), QCoreApplication::applicationFilePath())
    , session(clock)
    , accessibility(files, configurationFolder())
    , terminals(places)
    , machine(files)
{
    // The choice was for this process alone: a terminal started from here makes its own.
    if (std::exchange(platformChosenHere, false))
        qunsetenv(kPlatformVariable);
    layersPrepared();
    if (handlerBefore)
        qInstallMessageHandler(std::exchange(handlerBefore, nullptr));
}

void LinuxPlatform::start()
{
    windows->start();
    const auto sessionBus = QDBusConnection::sessionBus();
    session.start(QDBusConnection::systemBus(), sessionBus);
    const auto followLocker = [this] { session.setLockerRuns(applications.lockerRuns()); };
    QObject::connect(&applications, &Applications::runningChanged, &session, followLocker);
    followLocker();
    accessibility.start(sessionBus);
    players.start(sessionBus);
    keychain.follow(sessionBus);
}

} // namespace velto
