#include "OtherProgram.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Linux/StatusIcon.h"
#include "Platform/Linux/TrayStatusItem.h"
#include "Platform/Linux/X11/EwmhApplications.h"
#include "RunTests.h"

#include <QGuiApplication>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace velto;
using namespace Qt::StringLiterals;

/// What runs and what has the keyboard is known as soon as it changes; and a tray is, into which the icon goes.
class OtherWindowsTest : public QObject {
    Q_OBJECT
    std::unique_ptr<XcbServer> m_server;
    FakeClock m_clock;

private Q_SLOTS:
    void init()
    {
        if (QGuiApplication::platformName() != "xcb"_L1)
            QSKIP("no Xvfb or no openbox");
        m_server = std::make_unique<XcbServer>();
    }
    void cleanup() { m_server.reset(); }

    void windowsComeAndGo()
    {
        OtherProgram other;
        EwmhApplications applications(*m_server, m_clock);
        QVERIFY(applications.running().isEmpty());
        applications.start();
        const auto terminal = other.open(QRect(0, 100, 300, 200), QByteArray("xterm\0XTerm\0", 12));
        QTRY_COMPARE(applications.frontmost(), u"com.apple.Terminal"_s);
        QVERIFY(applications.running().contains(u"com.apple.Terminal"_s));
        const auto editor = other.open(QRect(400, 100, 300, 200), QByteArray("code\0Code\0", 10));
        QTRY_COMPARE(applications.frontmost(), u"com.microsoft.VSCode"_s);
        QTRY_COMPARE(applications.running().size(), 2); // the manager names the active window and the list one after the other
        const QSignalSpy changes(&applications, &Applications::runningChanged);
        other.close(terminal);
        QTRY_VERIFY(!applications.running().contains(u"com.apple.Terminal"_s));
        QCOMPARE(changes.size(), 1);
        other.close(editor);
        QTRY_VERIFY(applications.running().isEmpty());
    }
    void aWindowThatNamesItselfLate()
    {
        OtherProgram other;
        EwmhApplications applications(*m_server, m_clock);
        applications.start();
        const auto window = other.open(QRect(0, 100, 300, 200), {});
        QTRY_COMPARE(other.focus(), window);
        QTest::qWait(20);
        other.name(window, QByteArray("spotify\0Spotify\0", 16));
        QTRY_VERIFY(applications.running().contains(u"com.spotify.client"_s));
        QTRY_COMPARE(applications.frontmost(), u"com.spotify.client"_s);
    }
    void trayThatComesLater()
    {
        TrayStatusItem item(*m_server, [] { return QDBusConnection(u"none"_s); });
        item.show(u"Velto"_s, {{u"Open Velto"_s, {}, {}, [] {}}});
        QVERIFY(!item.inTray());
        OtherProgram tray;
        const auto owner = tray.open(QRect(0, 780, 100, 20), QByteArray("t\0T\0", 4), false, false);
        xcb_set_selection_owner(tray.connection(), owner, tray.atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
        xcb_flush(tray.connection());
        QTRY_VERIFY(item.inTray());
    }
    void iconIsSharp()
    {
        const auto icon = statusIcon();
        for (const int size : {16, 22, 24, 32, 48}) {
            const auto image = icon.pixmap(QSize(size, size)).toImage();
            QCOMPARE(image.size(), QSize(size, size));
            // Down the middle: light outline, gap, light block, dark room, light outline; and nothing half lit in between.
            QString column;
            for (int y = 0; y < size; ++y) {
                const auto colour = image.pixelColor(size / 2, y);
                const auto sign = colour.lightness() > 200 && colour.alpha() > 250 ? u'L' : colour.lightness() < 20 ? u'd' : u'?';
                if (column.isEmpty() || column.back() != sign)
                    column.append(sign);
            }
            QCOMPARE(column, u"dLdLdLd"_s);
        }
    }
    /// Also one that another program turns into after a while.
    void aRecorderWithoutAWindow()
    {
        const QTemporaryDir folder;
        QVERIFY(QFile::copy(u"/bin/sleep"_s, folder.filePath(u"obs"_s)));
        EwmhApplications applications(*m_server, m_clock);
        applications.start();
        const auto recording = [&] {
            m_clock.advance(std::chrono::milliseconds(100));
            return applications.running().contains(u"com.obsproject.obs-studio"_s);
        };
        for (const QString &script : {u"exec ./obs 60"_s, u"sleep 0.3; exec ./obs 60"_s}) {
            QProcess recorder;
            recorder.setWorkingDirectory(folder.path());
            recorder.start(u"/bin/sh"_s, {u"-c"_s, script});
            QTRY_VERIFY(recording());
            recorder.kill();
            QVERIFY(recorder.waitForFinished());
            QTRY_VERIFY(!recording());
        }
    }
};

static const Registered<OtherWindowsTest> kAdded;
#include "OtherWindowsTest.moc"
