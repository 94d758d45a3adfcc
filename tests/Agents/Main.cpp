#include "Agents/Tests.h"

#include <QCoreApplication>
#include <QTest>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    int failed = 0;
    for (const MakeTest make : tests())
        failed += QTest::qExec(make().get(), argc, argv) != 0;
    return failed;
}
