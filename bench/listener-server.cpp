// The hook listener with everything real but the UI. Prints its port and its token, and runs until its standard input ends.
// Each event costs what a small store would do with it; questions get no decision.

#include "Hooks/HookListener.h"
#include "Hooks/Hooks.h"
#include "Platform/Clock.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Posix/PosixLoopbackServer.h"
#include "Platform/Posix/SystemClock.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    velto::FakeDefaults defaults;
    const auto clock = velto::systemClock();
    velto::HookListener listener(defaults, std::make_unique<velto::PosixLoopbackServer>(), *clock, 0);
    qint64 heard = 0;
    QObject::connect(&listener, &velto::HookListener::told, [&heard] { ++heard; });
    QObject::connect(&listener, &velto::HookListener::asked,
                     [](const velto::HookEvent &, velto::HookListener::QuestionId, const velto::HookListener::Reply &reply) {
                         reply(std::nullopt);
                     });
    listener.start();
    if (!listener.running())
        return 1;
    std::printf("%d %s\n", listener.port(), qPrintable(velto::hookToken(defaults)));
    std::fflush(stdout);

    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &app, &QCoreApplication::quit);
    const int status = QCoreApplication::exec();
    std::fprintf(stderr, "%lld events\n", static_cast<long long>(heard));
    return status;
}
