#include "OtherProgram.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Linux/X11/EwmhApplications.h"
#include "Platform/Posix/Descriptor.h"
#include "Platform/Posix/ThreadPoolBackground.h"
#include "RunTests.h"

#include <QEventLoop>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <atomic>
#include <csignal>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>

using namespace velto;
using namespace Qt::StringLiterals;

static constexpr int kPatience = 20'000; // ms, for other programs to start on a busy machine

/// A socket that a server is to take over.
static Descriptor listenAt(const QString &path)
{
    Descriptor listening(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    qstrncpy(address.sun_path, path.toLocal8Bit().constData(), sizeof address.sun_path);
    if (::bind(listening.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
        || ::listen(listening.get(), SOMAXCONN) != 0)
        qFatal("nothing can listen at %s", address.sun_path);
    return listening;
}

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
            QEventLoop waiting; // unlike qWait() it tells that it is about to wait
            QTimer::singleShot(20, &waiting, &QEventLoop::quit);
            waiting.exec();
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
        // And so is one that starts while a tool of ours runs, which isn't looked for: one that ends soon, and one that hangs.
        for (const bool hangs : {false, true}) {
            std::atomic<bool> end = false;
            bool over = false;
            ThreadPoolBackground pool;
            const auto tool = [&] {
                do
                    std::this_thread::sleep_for(std::chrono::milliseconds(120));
                while (hangs && !end);
            };
            pool.start(tool, [&over] { over = true; });
            qint64 recorder = 0;
            QVERIFY(QProcess::startDetached(folder.filePath(u"obs"_s), {u"60"_s}, {}, &recorder));
            QTRY_VERIFY_WITH_TIMEOUT(recording(), kPatience);
            QVERIFY(!hangs || !over);
            end = true;
            ::kill(pid_t(recorder), SIGKILL);
            QTRY_VERIFY_WITH_TIMEOUT(!recording(), kPatience);
        }
    }
    /// Given out by a media server that comes after the program, goes while it does, and comes again at systemd's same socket.
    void aScreenCast()
    {
        const QTemporaryDir folder;
        qputenv("PIPEWIRE_RUNTIME_DIR", folder.path().toLocal8Bit());
        EwmhApplications applications(m_server, m_clock);
        applications.start();
        const auto cast = [&] {
            m_clock.advance(std::chrono::milliseconds(100));
            return applications.running().contains(u"com.obsproject.obs-studio"_s);
        };
        // With a bus, the media server and its clients wait for a portal that may take half a minute to start.
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, "unix:path="_L1 + folder.filePath(u"no-bus"_s));
        const Descriptor socket = listenAt(folder.filePath(u"pipewire-0"_s));
        QProcess camera;
        QProcess screen;
        for (QProcess *each : {&camera, &screen})
            each->setProcessEnvironment(environment);
        const auto give = [](QProcess &source, const QByteArray &properties) {
            source.start(u"pw-cli"_s, {});
            source.write("create-node spa-node-factory factory.name=support.node.driver media.class=Video/Source " + properties
                         + '\n');
            return source.waitForStarted();
        };
        const auto end = [](QProcess &program) { program.kill(), program.waitForFinished(); };
        for (int round = 0; round < 2; ++round) {
            QProcess server;
            server.setProcessEnvironment(environment);
            server.setChildProcessModifier([&socket] { ::dup2(socket.get(), 3); });
            server.start(u"/bin/sh"_s, {u"-c"_s, u"LISTEN_PID=$$ LISTEN_FDS=1 exec pipewire"_s});
            if (!server.waitForStarted() || server.waitForFinished(200))
                QSKIP("pipewire is missing (script/bootstrap --for test installs it)");
            QVERIFY(give(camera, "media.role=Camera"));
            for (const QByteArray name : {"node.name=screen", ""}) {
                QTRY_VERIFY_WITH_TIMEOUT(!cast(), kPatience);
                QVERIFY(give(screen, name));
                QTRY_VERIFY_WITH_TIMEOUT(cast(), kPatience);
                end(name.isEmpty() ? server : screen);
                QTRY_VERIFY_WITH_TIMEOUT(!cast(), kPatience);
            }
            end(camera), end(screen);
        }
        qunsetenv("PIPEWIRE_RUNTIME_DIR");
    }
};

static const Registered<OtherWindowsTest> kAdded;
#include "OtherWindowsTest.moc"
