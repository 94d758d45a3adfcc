#include "RunTests.h"
#include "Work/WorkReadersTest.h"
#include "Work/WorkSourceTest.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return velto::runTests<velto::WorkReadersTest, velto::WorkSourceTest>(argc, argv);
}
