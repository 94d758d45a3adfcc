#include "Platform/Fake/FakeFiles.h"
#include "Platform/Linux/LinuxMachine.h"
#include "Platform/Linux/QtDisplays.h"
#include "RunTests.h"

#include <QDir>
#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>

using namespace velto;
using namespace Qt::StringLiterals;

/// The machine's name, and the camera's housing in its screen: from stand-ins for a phone's device tree and library of panels.
class MachineTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_system;

    void become(const QByteArray &name)
    {
        const QDir folder(m_system.path());
        QVERIFY(folder.mkpath(u"firmware/devicetree/base"_s));
        QFile file(folder.filePath(u"firmware/devicetree/base/compatible"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(name + '\0');
    }

private Q_SLOTS:
    void name()
    {
        const QString host = QSysInfo::machineHostName();
        const auto row = [](const QByteArray &file, const QString &name) {
            FakeFiles files;
            if (!file.isNull())
                files.contents.insert(u"/etc/machine-info"_s, file);
            QCOMPARE(LinuxMachine(files).displayName(), name);
        };
        row({}, host);
        row("ICON_NAME=computer-laptop\nCHASSIS=laptop\n", host);
        row("CHASSIS=laptop\nPRETTY_HOSTNAME=\"Sam\xe2\x80\x99s Desk\"\n", u"Sam’s Desk"_s);
        row("PRETTY_HOSTNAME=\"a \\\"b\\\" \\$c \\\\d\"", u"a \"b\" $c \\d"_s);
        row("PRETTY_HOSTNAME='a \\ b'\r\n", u"a \\ b"_s);
        row("PRETTY_HOSTNAME=desk", u"desk"_s);
        row("PRETTY_HOSTNAME=\"\"\n", host);
        row("PRETTY_HOSTNAME=" + QByteArray(100'000, 'x'), host);
    }
    void machines()
    {
        QVERIFY(!builtInPanel(m_system.path(), PANEL_DATA)); // no device tree, as on most machines
        become("stand-in,phone");
        QVERIFY(!builtInPanel(m_system.path(), "libno-such-library.so.0"));
        const auto panel = builtInPanel(m_system.path(), PANEL_DATA);
        QVERIFY(panel);
        QCOMPARE(panel->housing, QRect(390, 0, 300, 90)); // not the hole in the corner
        become("other,phone");
        QVERIFY(!builtInPanel(m_system.path(), PANEL_DATA));
    }
    void screens()
    {
        const DisplayPanel panel{{1080, 2400}, {390, 0, 300, 90}};
        QCOMPARE(housingOn(panel, {1080, 2400}), QSizeF(300, 90));
        QCOMPARE(housingOn(panel, {360, 800}), QSizeF(100, 30)); // at a scale of 3
        QVERIFY(housingOn(panel, {800, 360}).isEmpty()); // lying on its side
        QCOMPARE(housingOn({{1080, 2400}, {500, 0, 140, 90}}, {1080, 2400}), QSizeF(200, 90)); // a little off the middle
        QVERIFY(isBuiltIn(u"DSI-1"_s));
        QVERIFY(!isBuiltIn(u"HDMI-A-1"_s));
    }
};

static const Registered<MachineTest> kAdded;
#include "MachineTest.moc"
