#include "Agents/Tests.h"
#include "Todos/NativeFile.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTest>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == velto::kSaveUntilKilled)
        velto::saveUntilKilled(arguments[2]);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    int failed = 0;
    for (const MakeTest make : tests())
        failed += QTest::qExec(make().get(), argc, argv) != 0;
    return failed;
}
