#include "App/Check.h"
#include "App/CommandLine.h"
#include "App/Program.h"
#include "App/Snapshot.h"
#include "Core/Texts.h"
#include "Platform/Linux/DBusActivation.h"
#include "Platform/Linux/LinuxMachine.h"
#include "Platform/Linux/LinuxPlatform.h"
#include "Platform/Linux/LinuxWording.h"
#include "Platform/Posix/ProgramEnd.h"

#include <QGuiApplication>
#include <QLocale>
#include <QQuickWindow>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iterator>
#include <thread>

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds kLongestEnd{1800};
constexpr std::chrono::milliseconds kNextLook{50};

void print(std::FILE *stream, const QString &text)
{
    std::fputs(qPrintable(text), stream);
}

/// Another program runs on these settings: hands over to it, or takes its place if it is just ending.
int handOver(int argc, char **argv, velto::Activation &activation, const velto::CommandLine &commandLine)
{
    const QCoreApplication application(argc, argv);
    if (activation.handOver(commandLine.actionsForTheOther()))
        return 0;
    for (auto waited = 0ms; waited < kLongestEnd; waited += kNextLook) {
        if (activation.claim())
            velto::startAnew(argv); // an application object can't be made twice
        std::this_thread::sleep_for(kNextLook);
    }
    print(stderr,
          QCoreApplication::translate("velto",
                                      "Velto is running already, but it can't be reached: perhaps it is in another session of "
                                      "yours. End that one first (pkill -x velto).")
              + u'\n');
    return 1;
}

/// Draws the pictures that the command line asks for.
int draw(int argc, char **argv, const velto::CommandLine &commandLine)
{
    const QGuiApplication application(argc, argv);
    velto::speakLinux();
    const auto problem = velto::takePictures(commandLine);
    if (problem)
        print(stderr, *problem + u'\n');
    return problem ? 1 : 0;
}

void introduce()
{
    // Starts faster than OpenGL, takes less memory, and costs nothing at rest. Must be chosen before any window exists.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    // The texts are English, so dates and numbers in them are too, in the order and with the clock of the user's country.
    QLocale::setDefault(velto::english(QLocale::system()));
    QGuiApplication::setApplicationName(QStringLiteral("velto"));
    QGuiApplication::setApplicationVersion(QLatin1String(VELTO_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral(VELTO_APPLICATION_ID));
}

} // namespace

int main(int argc, char **argv)
{
    QStringList arguments;
    std::transform(argv + 1, argv + argc, std::back_inserter(arguments),
                   [](const char *argument) { return QString::fromLocal8Bit(argument); });
    const velto::CommandLine commandLine = velto::CommandLine::parse(arguments);
    if (commandLine.help) {
        print(stdout, velto::helpText());
        return 0;
    }
    if (commandLine.version) {
        print(stdout, QStringLiteral("velto %1\n").arg(QLatin1String(VELTO_VERSION)));
        return 0;
    }
    if (!commandLine.unknown.isEmpty()) {
        print(stderr,
              QCoreApplication::translate("velto", "velto: there is no option %1. Try: velto --help").arg(commandLine.unknown)
                  + u'\n');
        return 2;
    }
    if (velto::choosePictures(commandLine)) {
        velto::prepareGraphics();
        introduce();
        return draw(argc, argv, commandLine);
    }
    if (commandLine.check) {
        const auto noDisplay = velto::prepareGraphics(commandLine.display);
        if (noDisplay)
            qputenv("QT_QPA_PLATFORM", "offscreen");
        introduce();
        const QGuiApplication application(argc, argv);
        velto::speakLinux();
        print(stdout, velto::checkReport(noDisplay));
        return noDisplay ? 1 : 0;
    }
    velto::useOneHeap();
    velto::DBusActivation activation(velto::placesOfThisMachine().configuration, QStringLiteral(VELTO_APPLICATION_ID));
    if (!activation.claim())
        return handOver(argc, argv, activation, commandLine);
    if (const auto problem = velto::prepareGraphics(commandLine.display)) {
        print(stderr, *problem + u'\n');
        return 1;
    }
    introduce();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication application(argc, argv);
    velto::speakLinux();
    const velto::Program program(commandLine, activation);
    const int status = QGuiApplication::exec();
    velto::endsWithin(kLongestEnd, status);
    return status;
}
