#include "Home/UsageLineTest.h"
#include "Home/UsageReaderTest.h"
#include "RunTests.h"

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return velto::runTests<velto::UsageLineTest, velto::UsageReaderTest>(argc, argv);
}
