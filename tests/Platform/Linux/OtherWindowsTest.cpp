#include "OtherProgram.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Linux/X11/EwmhApplications.h"
#include "RunTests.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace velto;
using namespace Qt::StringLiterals;

static constexpr int kPatience = 20'000; // ms, for other programs to start on a busy machine

/// What runs and what has the keyboard is known as soon as it changes.
class OtherWindowsTest : public QObject {
    Q_OBJECT
    XcbServer m_server;
    FakeClock m_clock;

private Q_SLOTS:
    void windowsComeAndGo()
    {
        OtherProgram other;
        EwmhApplications applications(m_server, m_clock);
        QVERIFY(applications.running().isEmpty());
        applications.start();
        const auto terminal = other.open(QRect(0, 100, 300, 200), QByteArray("xterm\0XTerm\0", 12));
        QTRY_COMPARE(applications.frontmost(), u"com.apple.Terminal"_s);
        QVERIFY(applications.running().contains(u"com.apple.Terminal"_s));
        const auto editor = other.open(QRect(400, 100, 300, 200), QByteArray("code\0Code\0", 10));
        QTRY_COMPARE(applications.frontmost(), u"com.microsoft.VSCode"_s);
        QTRY_COMPARE(applications.running().size(), 2); // the manager sets the active window and the list separately
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
        EwmhApplications applications(m_server, m_clock);
        applications.start();
        const auto window = other.open(QRect(0, 100, 300, 200), {});
        QTRY_COMPARE(other.focus(), window);
        QTest::qWait(20);
        other.name(window, QByteArray("spotify\0Spotify\0", 16));
        QTRY_VERIFY(applications.running().contains(u"com.spotify.client"_s));
        QTRY_COMPARE(applications.frontmost(), u"com.spotify.client"_s);
    }
    /// A program that later executes a recorder is noticed too.
    void aRecorderWithoutAWindow()
    {
        const QTemporaryDir folder;
        QVERIFY(QFile::copy(u"/bin/sleep"_s, folder.filePath(u"obs"_s)));
        EwmhApplications applications(m_server, m_clock);
        applications.start();
        const auto recording = [&] {
            m_clock.advance(std::chrono::milliseconds(100));
            return applications.running().contains(u"com.obsproject.obs-studio"_s);
        };
        for (const QString &script : {u"exec ./obs 60"_s, u"sleep 0.3; exec ./obs 60"_s}) {
            QProcess recorder;
            recorder.setWorkingDirectory(folder.path());
            recorder.start(u"/bin/sh"_s, {u"-c"_s, script});
            QTRY_VERIFY_WITH_TIMEOUT(recording(), kPatience);
            recorder.kill();
            QVERIFY(recorder.waitForFinished());
            QTRY_VERIFY_WITH_TIMEOUT(!recording(), kPatience);
        }
    }
    /// Given out by a media server that came after the program, and that goes while it does.
    void aScreenCast()
    {
        const QTemporaryDir folder;
        qputenv("PIPEWIRE_RUNTIME_DIR", folder.path().toLocal8Bit());
        EwmhApplications applications(m_server, m_clock);
        applications.start();
        const auto cast = [&applications] { return applications.running().contains(u"com.obsproject.obs-studio"_s); };
        // With a bus, the media server and its clients wait for a portal that may take half a minute to start.
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, "unix:path="_L1 + folder.filePath(u"no-bus"_s));
        QProcess server;
        QProcess camera;
        QProcess screen;
        for (QProcess *each : {&server, &camera, &screen})
            each->setProcessEnvironment(environment);
        server.start(u"pipewire"_s, {});
        if (!server.waitForStarted())
            QSKIP("pipewire is missing (script/bootstrap --for test installs it)");
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(folder.filePath(u"pipewire-0"_s)), kPatience);
        const auto give = [](QProcess &source, const QByteArray &properties) {
            source.start(u"pw-cli"_s, {});
            source.write("create-node spa-node-factory factory.name=videotestsrc library.name=videotestsrc/libspa-videotestsrc "
                         "media.class=Video/Source "
                         + properties + '\n');
            return source.waitForStarted();
        };
        QVERIFY(give(camera, "media.role=Camera"));
        QVERIFY(give(screen, "node.name=screen"));
        QTRY_VERIFY_WITH_TIMEOUT((m_clock.advance(std::chrono::milliseconds(100)), cast()), kPatience);
        screen.kill();
        QTRY_VERIFY_WITH_TIMEOUT(!cast(), kPatience);
        screen.waitForFinished();
        QVERIFY(give(screen, {}));
        QTRY_VERIFY_WITH_TIMEOUT(cast(), kPatience);
        server.kill();
        QTRY_VERIFY_WITH_TIMEOUT(!cast(), kPatience);
        for (QProcess *each : {&server, &camera, &screen})
            each->kill(), each->waitForFinished();
        qunsetenv("PIPEWIRE_RUNTIME_DIR");
    }
};

static const Registered<OtherWindowsTest> kAdded;
#include "OtherWindowsTest.moc"
