#include "CalendarTest.h"
#include "ReadingTest.h"
#include "RunTests.h"
#include "SignInTest.h"
#include "TokensTest.h"

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    return velto::runTests<velto::ReadingTest, velto::SignInTest, velto::TokensTest, velto::CalendarTest>(argc, argv);
}
