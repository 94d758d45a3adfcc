#include "RunTests.h"
#include "VirtualDesktop.h"

#include <QGuiApplication>

int main(int argc, char **argv)
{
    const VirtualDesktop desktop;
    if (!desktop.works())
        return 77; // skipped
    const QGuiApplication application(argc, argv);
    return runTests(argc, argv);
}
