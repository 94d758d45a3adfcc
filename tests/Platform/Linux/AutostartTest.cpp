#include "Platform/Linux/AutostartLoginItem.h"
#include "Platform/Posix/PosixFiles.h"
#include "RunTests.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace velto;
using namespace Qt::StringLiterals;

/// The program is started at login from wherever it is, and the desktop's own switch for it counts.
class AutostartTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void execs()
    {
        QCOMPARE(desktopExec(u"/usr/bin/velto"_s), "\"/usr/bin/velto\"");
        QCOMPARE(desktopExec(u"/opt/my apps/velto"_s), "\"/opt/my apps/velto\"");
        QCOMPARE(desktopExec(u"/opt/100%/velto"_s), "\"/opt/100%%/velto\"");
        QCOMPARE(desktopExec(u"/o$t/a\"b"_s), "\"/o\\\\$t/a\\\\\"b\"");
        QCOMPARE(desktopExec(u"/a\\b"_s), "\"/a\\\\\\\\b\"");
    }
    void entries()
    {
        const auto starts = [](const char *rest) {
            return startsAtLogin("[Desktop Entry]\n" + QByteArray(rest), u"/usr/bin/velto"_s);
        };
        QVERIFY(starts("Exec=\"/usr/bin/velto\"\n"));
        QVERIFY(starts("Exec = /usr/bin/velto\n"));
        for (const char *no : {"Exec=\"/usr/bin/velto\"\nHidden=true\n", "Exec=/usr/bin/velto\nX-GNOME-Autostart-enabled=false\n",
                               "Exec=\"/old/velto\"\n", "Name=Velto\n", "[Desktop Action x]\nExec=/usr/bin/velto\n", ""})
            QVERIFY2(!starts(no), no);
        QVERIFY(!startsAtLogin({}, u"/usr/bin/velto"_s));
    }
    void switchesOnAndOff()
    {
        const QTemporaryDir home;
        PosixFiles files;
        AutostartLoginItem item(files, home.path(), u"/opt/we ird%/velto"_s);
        QVERIFY(!item.enabled());
        QVERIFY(!item.set(false));
        QVERIFY(item.set(true));
        QFile entry(home.filePath(u"autostart/velto.desktop"_s));
        QVERIFY(entry.open(QIODevice::ReadOnly));
        const auto lines = entry.readAll().split('\n');
        QVERIFY(lines.contains("Exec=\"/opt/we ird%%/velto\""));
        QVERIFY(lines.contains("TryExec=/opt/we ird%/velto")); // so desktops skip the entry once the program is gone
        // A second program of the same name isn't the one started at login.
        QVERIFY(!AutostartLoginItem(files, home.path(), u"/usr/bin/velto"_s).enabled());
        QVERIFY(!item.set(false));
        QVERIFY(!QFile::exists(home.filePath(u"autostart/velto.desktop"_s)));
    }
};

static const Registered<AutostartTest> kAdded;
#include "AutostartTest.moc"
