#include "Hub/HubClientTest.h"
#include "Hub/QuillboxSourceTest.h"
#include "Hub/SnapshotTest.h"
#include "RunTests.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return velto::runTests<velto::SnapshotTest, velto::HubClientTest, velto::QuillboxSourceTest>(argc, argv);
}
