#include "RunTests.h"

#include <QLocale>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    return runTests(argc, argv);
}
