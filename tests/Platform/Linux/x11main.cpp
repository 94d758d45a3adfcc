#include "Tests.h"
#include "VirtualDesktop.h"

#include <QApplication>
#include <QTest>

std::vector<std::function<std::unique_ptr<QObject>()>> &tests()
{
    static std::vector<std::function<std::unique_ptr<QObject>()>> list;
    return list;
}

int main(int argc, char **argv)
{
    const VirtualDesktop desktop;
    // Without a display each test skips itself; offscreen there is still an application for it to run in.
    const QApplication application(argc, argv);
    int failed = 0;
    for (const auto &make : tests())
        failed += QTest::qExec(make().get(), argc, argv);
    return failed;
}
