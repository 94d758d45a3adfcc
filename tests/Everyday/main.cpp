#include "Everyday/CalendarTest.h"
#include "Everyday/FocusTest.h"
#include "Everyday/GlanceTest.h"
#include "Everyday/MediaTest.h"
#include "Everyday/ReadingTest.h"
#include "RunTests.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return velto::runTests<velto::CalendarTest, velto::FocusTest, velto::MediaTest, velto::GlanceTest, velto::ReadingTest>(argc,
                                                                                                                           argv);
}
