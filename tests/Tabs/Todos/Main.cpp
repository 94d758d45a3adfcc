#include "RunTests.h"

#include <QLocale>

namespace velto {
[[noreturn]] void addTodosUntilKilled(const QString &folder);
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == u"--add-until-killed")
        velto::addTodosUntilKilled(arguments[2]);
    return runTests(argc, argv);
}
