#include "Platform/Linux/AutostartLoginItem.h"
#include "Platform/Linux/LinuxVideoPlayer.h"
#include "Platform/Linux/ProcessFolderPanel.h"
#include "Platform/Linux/XdgWorkspace.h"
#include "Platform/Posix/FilesTesting.h"
#include "Platform/Posix/PosixFiles.h"
#include "RunTests.h"

#include <QDesktopServices>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace velto;
using namespace Qt::StringLiterals;

/// What the program starts, and what starts it: a link from outside opens a browser and never any other program; at login the
/// program starts from wherever it stands, and the desktop's own switch for it counts.
class StartsTest : public QObject {
    Q_OBJECT

    QList<QUrl> m_opened;

public Q_SLOTS:
    void take(const QUrl &url) { m_opened.append(url); }

private Q_SLOTS:
    void opensWhatABrowserTakes()
    {
        const auto opened = [this](const char *link) {
            m_opened.clear();
            XdgWorkspace().open(QUrl(QString::fromLatin1(link)));
            return !m_opened.isEmpty();
        };
        const auto schemes = {"http", "https", "file", "ssh", "javascript", "mailto", "data", ""};
        for (const char *scheme : schemes)
            QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "take");
        for (const char *link : {"https://a.example/x?y=$(touch z)#`id`", "http://a.example", "HTTPS://A.EXAMPLE/"})
            QVERIFY2(opened(link), link);
        for (const char *link : {"", "a.example", "//a.example", "https:///etc/passwd", "https:a", "file:///etc/passwd",
                                 "file://a.example/x", "ssh://a.example", "javascript:alert(1)", "mailto:sam@acme.example",
                                 "data://a.example/text", "https://a.example:99999999"})
            QVERIFY2(!opened(link), link);
        for (const char *scheme : schemes)
            QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
    }

    void foldersAreChosenInAProcessOfItsOwn()
    {
        QTemporaryDir folder;
        const QString program = folder.filePath(u"folders"_s);
        QStringList paths;
        int answers = 0;
        const auto runs = [&](const QByteArray &script) { writeFile(program, "#!/bin/sh\n" + script, 0700); };
        ProcessFolderPanel panel(program);
        const auto choose = [&] {
            panel.choose(u"Watch"_s, [&](const QStringList &chosen) {
                paths = chosen;
                ++answers;
            });
        };
        choose(); // it isn't there
        QTest::qWait(300);
        // The second call only brings the dialog to the front.
        runs("read line; printf '/a b\\0/\303\244\\n\\0'");
        choose();
        choose();
        QTRY_COMPARE(answers, 1);
        QCOMPARE(paths, QStringList({u"/a b"_s, u"/ä\n"_s}));
        // The program crashes, or the user cancels.
        for (const auto *script : {"printf '/a\\0'; kill -9 $$", "exit 0"}) {
            runs(script);
            choose();
            QTest::qWait(300);
        }
        QCOMPARE(answers, 1);
    }

    void aPlayerOfVideosThatCantBeStartedFails()
    {
        LinuxVideoPlayer player({u"/nowhere/velto-video"_s});
        QVERIFY(!player.installed());
        const QSignalSpy failed(&player, &VideoPlayer::failed);
        player.open({}, {}, 0, {});
        player.move({1, 2, 3, 4});
        player.close();
        QCOMPARE(failed.count(), 1);
    }

    void entriesOfTheAutostartFolder()
    {
        QCOMPARE(desktopExec(u"/o$t/a\"b"_s), "\"/o\\\\$t/a\\\\\"b\"");
        QCOMPARE(desktopExec(u"/a\\b"_s), "\"/a\\\\\\\\b\"");

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
        const QString entry = home.filePath(u"autostart/velto.desktop"_s);
        const auto lines = readFile(entry).split('\n');
        QVERIFY(lines.contains("Exec=\"/opt/we ird%%/velto\""));
        QVERIFY(lines.contains("TryExec=/opt/we ird%/velto")); // once the program is gone, the desktop passes over it
        // A second program of the same name isn't the one that starts.
        QVERIFY(!AutostartLoginItem(files, home.path(), u"/usr/bin/velto"_s).enabled());
        QVERIFY(!item.set(false));
        QVERIFY(!QFile::exists(entry));
    }
};

static const Registered<StartsTest> kAdded;
#include "StartsTest.moc"
