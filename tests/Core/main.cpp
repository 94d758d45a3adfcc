#include "Core/DateModelTest.h"
#include "Core/HubTest.h"
#include "Core/PeekQueueTest.h"
#include "Core/PrefsTest.h"
#include "RunTests.h"

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return velto::runTests<velto::PeekQueueTest, velto::PrefsTest, velto::HubTest, velto::DateModelTest>(argc, argv);
}
