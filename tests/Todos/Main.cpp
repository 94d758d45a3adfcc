#include "RunTests.h"
#include "Todos/NativeFile.h"

#include <QCoreApplication>
#include <QLocale>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == velto::kSaveUntilKilled)
        velto::saveUntilKilled(arguments[2]);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    return runTests(argc, argv);
}
