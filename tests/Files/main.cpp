#include <QCoreApplication>
#include <QtTest>

using namespace Qt::StringLiterals;

int runPosixFilesTest(int argc, char **argv);
int runJsonDefaultsTest(int argc, char **argv);
int runSettingsEditTest(int argc, char **argv);
int runHookInstallerTest(int argc, char **argv);
[[noreturn]] void writeUntilKilled(const QString &path);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == "--write-until-killed"_L1)
        writeUntilKilled(arguments[2]);
    int failures = 0;
    for (const auto run : {runPosixFilesTest, runJsonDefaultsTest, runSettingsEditTest, runHookInstallerTest})
        failures += run(argc, argv);
    return std::min(failures, 1);
}
