#include "Platform/Fake/FakeFiles.h"
#include "Platform/Linux/LinuxMachine.h"
#include "RunTests.h"

#include <QSysInfo>

using namespace velto;
using namespace Qt::StringLiterals;

/// The machine is called what its user called it.
class MachineTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void name_data()
    {
        columns<QByteArray, QString>({"file", "name"});
        const QString host = QSysInfo::machineHostName();
        QTest::newRow("none") << QByteArray() << host;
        QTest::newRow("other facts only") << QByteArray("ICON_NAME=computer-laptop\nCHASSIS=laptop\n") << host;
        QTest::newRow("quoted") << QByteArray("CHASSIS=laptop\nPRETTY_HOSTNAME=\"Sam\xe2\x80\x99s Desk\"\n") << u"Sam’s Desk"_s;
        QTest::newRow("escaped") << QByteArray("PRETTY_HOSTNAME=\"a \\\"b\\\" \\$c \\\\d\"") << u"a \"b\" $c \\d"_s;
        QTest::newRow("single quotes") << QByteArray("PRETTY_HOSTNAME='a \\ b'\r\n") << u"a \\ b"_s;
        QTest::newRow("bare") << QByteArray("PRETTY_HOSTNAME=desk") << u"desk"_s;
        QTest::newRow("empty") << QByteArray("PRETTY_HOSTNAME=\"\"\n") << host;
        QTest::newRow("too large") << QByteArray("PRETTY_HOSTNAME=") + QByteArray(100'000, 'x') << host;
    }
    void name()
    {
        QFETCH(QByteArray, file);
        FakeFiles files;
        if (!file.isNull())
            files.contents.insert(u"/etc/machine-info"_s, file);
        QTEST(LinuxMachine(files).displayName(), "name");
    }
};

static const Registered<MachineTest> kAdded;
#include "MachineTest.moc"
