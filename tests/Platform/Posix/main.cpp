#include "RunTests.h"

using namespace Qt::StringLiterals;

[[noreturn]] void writeUntilKilled(const QString &path);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == "--write-until-killed"_L1)
        writeUntilKilled(arguments[2]);
    return runTests(argc, argv);
}
