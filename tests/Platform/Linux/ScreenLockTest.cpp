#include "Platform/Fake/FakeClock.h"
#include "Platform/Linux/LogindSession.h"
#include "PrivateBus.h"
#include "RunTests.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QSignalSpy>

using namespace velto;
using namespace Qt::StringLiterals;

namespace {

const auto kPath = u"/org/freedesktop/login1/session/_31"_s;
const auto kSession = u"org.freedesktop.login1.Session"_s;
const auto kSaver = u"org.xfce.ScreenSaver"_s;
const auto kSaverPath = u"/org/xfce/ScreenSaver"_s;

} // namespace

/// The session knows whether the screen is locked, by whatever locks it; and it is never left locked without a reason.
class ScreenLockTest : public QObject {
    Q_OBJECT
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<PlayedService> m_logind;
    std::unique_ptr<PlayedService> m_saver;
    FakeClock m_clock;
    std::unique_ptr<LogindSession> m_session;

    /// Starts the session and waits until it follows both buses.
    void begin()
    {
        m_session = std::make_unique<LogindSession>(m_clock);
        const auto bus = m_bus->connect();
        m_session->start(bus, bus);
        QTRY_VERIFY(m_logind->asked.contains(u"Get:LockedHint"_s));
        QTRY_VERIFY(m_saver->asked.contains(u"GetActive"_s));
    }

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        if (!m_bus->works())
            QSKIP("no dbus-daemon");
        m_logind = std::make_unique<PlayedService>(m_bus->connect(), u"org.freedesktop.login1"_s);
        m_logind->answers = {{u"GetSessionByPID"_s, QVariant::fromValue(QDBusObjectPath(kPath))}, {u"Get:LockedHint"_s, false}};
        m_saver = std::make_unique<PlayedService>(m_bus->connect(), kSaver);
        m_saver->answers = {{u"GetActive"_s, false}};
    }
    void cleanup()
    {
        m_session.reset();
        m_saver.reset();
        m_logind.reset();
        m_bus.reset();
    }

    void startedByTheServiceManagerOnALockedScreen()
    {
        QDBusArgument display; // a struct of a name and a path
        display.beginStructure();
        display << u"c2"_s << QDBusObjectPath(kPath);
        display.endStructure();
        m_logind->answers.remove(u"GetSessionByPID"_s);
        m_logind->answers.insert(u"Get:Display"_s, QVariant::fromValue(display));
        m_logind->answers.insert(u"Get:LockedHint"_s, true);
        begin();
        QTRY_VERIFY(m_session->locked());
        m_logind->emitPropertyChange(kPath, kSession, u"LockedHint"_s, false);
        QTRY_VERIFY(!m_session->locked());
    }
    void requestsWithAndWithoutALocker()
    {
        begin();
        m_logind->emitSignal(kPath, kSession, u"Lock"_s, {});
        QTRY_VERIFY(m_session->locked());
        m_clock.advance(std::chrono::seconds(11));
        QVERIFY(!m_session->locked());
        // A locker that reports nothing, but is seen to run.
        m_logind->emitSignal(kPath, kSession, u"Lock"_s, {});
        QTRY_VERIFY(m_session->locked());
        m_session->setLockerRuns(true);
        m_clock.advance(std::chrono::minutes(1));
        QVERIFY(m_session->locked());
        m_session->setLockerRuns(false);
        QVERIFY(!m_session->locked());
        // One that reports.
        m_logind->emitSignal(kPath, kSession, u"Lock"_s, {});
        QTRY_VERIFY(m_session->locked());
        m_logind->emitPropertyChange(kPath, kSession, u"LockedHint"_s, true);
        QTRY_COMPARE(m_clock.pendingTimers(), 0);
        m_clock.advance(std::chrono::minutes(1));
        QVERIFY(m_session->locked());
        m_logind->emitSignal(kPath, kSession, u"Unlock"_s, {});
        QTRY_VERIFY(!m_session->locked());
    }
    void twoReasonsAtOnce()
    {
        begin();
        const QSignalSpy changes(m_session.get(), &Session::lockedChanged);
        m_saver->emitSignal(kSaverPath, kSaver, u"ActiveChanged"_s, {true});
        m_logind->emitPropertyChange(kPath, kSession, u"LockedHint"_s, true);
        QTRY_VERIFY(m_session->locked());
        m_saver->emitSignal(kSaverPath, kSaver, u"ActiveChanged"_s, {false});
        m_logind->emitSignal(u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s, u"PrepareForSleep"_s, {true});
        const QSignalSpy awake(m_session.get(), &Session::woke);
        m_logind->emitSignal(u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s, u"PrepareForSleep"_s, {false});
        QTRY_COMPARE(awake.size(), 1);
        QVERIFY(m_session->locked());
        QCOMPARE(changes.size(), 1);
    }
    /// Any program can send any signal.
    void signalsOfOthers()
    {
        begin();
        const QString name = u"org.example.Other"_s;
        PlayedService other(m_bus->connect(), name);
        const auto settle = [this] {
            const auto asked = m_saver->asked.size();
            m_saver->emitSignal(kSaverPath, kSaver, u"Unknown"_s, {});
            LogindSession later(m_clock);
            later.start(QDBusConnection(u"none"_s), m_bus->connect());
            QTRY_VERIFY(m_saver->asked.size() > asked);
            QTest::qWait(0);
        };
        other.emitSignal(kSaverPath, kSaver, u"ActiveChanged"_s, {true});
        other.emitSignal(u"/org/gnome/ScreenSaver"_s, u"org.gnome.ScreenSaver"_s, u"ActiveChanged"_s, {true});
        settle();
        QVERIFY(!m_session->locked());
        m_saver->emitSignal(kSaverPath, kSaver, u"ActiveChanged"_s, {true});
        QTRY_VERIFY(m_session->locked());
        other.emitSignal(kSaverPath, kSaver, u"ActiveChanged"_s, {false});
        settle();
        QVERIFY(m_session->locked());
        m_saver.reset(); // one that crashes locks no longer
        QTRY_VERIFY(!m_session->locked());
        LogindSession alone(m_clock);
        alone.start(QDBusConnection(u"none"_s), QDBusConnection(u"none"_s));
        QVERIFY(!alone.locked());
    }
};

static const Registered<ScreenLockTest> kAdded;
#include "ScreenLockTest.moc"
