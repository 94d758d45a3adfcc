#include "Platform/Linux/LinuxPlatform.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QStandardPaths>
#include <cstdio>
#include <cstdlib>

namespace velto {

namespace {

constexpr auto kPlatformVariable = "QT_QPA_PLATFORM";
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): before the application object, and a message handler is a
// plain function
bool platformChosenHere = false;
QtMessageHandler handlerBefore = nullptr;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

/// Stands in while the application object is made. The toolkit ends in qFatal() if it can open no display, and aborts: it
/// gets no further than here. Asking for the display beforehand would cost a second connection at every start.
void sayAndEnd(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type == QtFatalMsg) {
        const auto sentence =
            QCoreApplication::translate("velto", "Velto needs a graphical session: the display %1 can't be opened.")
                .arg(qEnvironmentVariable("DISPLAY"));
        std::fprintf(stderr, "%s\n", qPrintable(sentence));
        std::_Exit(EXIT_FAILURE);
    }
    // What leads up to it says the same less well.
    if (!QByteArrayView(context.category).startsWith("qt.qpa") && handlerBefore)
        handlerBefore(type, context, message);
}

QString configurationFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}

} // namespace

std::optional<QString> prepareGraphics()
{
    // A pixel is a pixel at a scale of 1.5 too.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const auto chosen = qgetenv(kPlatformVariable);
    const bool elsewhere = !chosen.isEmpty() && !chosen.startsWith("xcb") && !chosen.startsWith("wayland");
    if (elsewhere)
        return std::nullopt;
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
            ? QCoreApplication::translate("velto", "Velto needs a graphical session: neither DISPLAY nor WAYLAND_DISPLAY is set.")
            : QCoreApplication::translate("velto",
                                          "Velto needs a graphical session with X11: under Wayland it runs through "
                                          "XWayland, and DISPLAY isn't set.");
    // Under Wayland a window can't choose its place by itself; through XWayland it can.
    qputenv(kPlatformVariable, "xcb");
    platformChosenHere = chosen.isEmpty();
    handlerBefore = qInstallMessageHandler(&sayAndEnd);
    return std::nullopt;
}

LinuxPlatform::LinuxPlatform(Clock &clock, Files &files, const Places &places)
    : displays(server)
    , panelWindow(server)
    , hotKey(server)
    , applications(server, clock)
    , statusItem(server)
    , loginItem(files, configurationFolder(), QCoreApplication::applicationFilePath())
    , session(clock)
    , accessibility(files, configurationFolder())
    , clipboard(server, clock)
    , terminals(places)
    , machine(files)
{
    // The choice was for us alone: a terminal that we start makes its own.
    if (std::exchange(platformChosenHere, false))
        qunsetenv(kPlatformVariable);
    if (handlerBefore)
        qInstallMessageHandler(std::exchange(handlerBefore, nullptr));
}

void LinuxPlatform::start()
{
    applications.start();
    const auto sessionBus = QDBusConnection::sessionBus();
    session.start(QDBusConnection::systemBus(), sessionBus);
    accessibility.start(sessionBus);
    players.start(sessionBus);
    keychain.follow(sessionBus);
}

} // namespace velto
