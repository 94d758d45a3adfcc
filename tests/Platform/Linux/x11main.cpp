#include "RunTests.h"
#include "VirtualDesktop.h"

#include <QGuiApplication>

int main(int argc, char **argv)
{
    const VirtualDesktop desktop;
    // Without a display each test skips itself; offscreen there is still an application for it to run in.
    const QGuiApplication application(argc, argv);
    return runTests(argc, argv);
}
