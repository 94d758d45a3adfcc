#include "Tests.h"

#include <QCoreApplication>
#include <QTest>

std::vector<std::function<std::unique_ptr<QObject>()>> &tests()
{
    static std::vector<std::function<std::unique_ptr<QObject>()>> list;
    return list;
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    int failed = 0;
    for (const auto &make : tests())
        failed += QTest::qExec(make().get(), argc, argv);
    return failed;
}
