#include "RunTests.h"
#include "Signals/McpTest.h"
#include "Signals/ReposTest.h"
#include "Signals/SourceTest.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return velto::runTests<velto::McpTest, velto::ReposTest, velto::SignalsSourceTest>(argc, argv);
}
