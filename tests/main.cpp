#include "RunTests.h"

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return runTests(argc, argv);
}
