#include "Platform/Linux/LogindSession.h"

#include "Platform/Clock.h"
#include "Platform/Linux/DBusAsk.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <algorithm>
#include <array>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

// https://www.freedesktop.org/software/systemd/man/org.freedesktop.login1.html
constexpr auto kLogin = "org.freedesktop.login1"_L1;
constexpr auto kLoginPath = "/org/freedesktop/login1"_L1;
constexpr auto kLoginManager = "org.freedesktop.login1.Manager"_L1;
constexpr auto kLoginSession = "org.freedesktop.login1.Session"_L1;
constexpr std::chrono::seconds kRequestHolds{10};

struct Saver {
    QLatin1StringView interface; // and service: they go by the same name
    QLatin1StringView path;
};
constexpr std::array kSavers{
    Saver{"org.freedesktop.ScreenSaver"_L1, "/org/freedesktop/ScreenSaver"_L1},
    Saver{"org.gnome.ScreenSaver"_L1, "/org/gnome/ScreenSaver"_L1},
    Saver{"org.cinnamon.ScreenSaver"_L1, "/org/cinnamon/ScreenSaver"_L1},
    Saver{"org.mate.ScreenSaver"_L1, "/org/mate/ScreenSaver"_L1},
    Saver{"org.xfce.ScreenSaver"_L1, "/org/xfce/ScreenSaver"_L1},
};

} // namespace

LogindSession::LogindSession(Clock &clock, QObject *parent)
    : Session(parent)
    , m_clock(clock)
    , m_system(QString())
    , m_session(QString())
{
}

void LogindSession::start(const QDBusConnection &system, const QDBusConnection &session)
{
    m_system = system;
    m_session = session;
    if (m_system.isConnected()) {
        m_system.connect(kLogin, kLoginPath, kLoginManager, u"PrepareForSleep"_s, this, SLOT(preparesForSleep(bool)));
        findSession();
    }
    if (m_session.isConnected())
        followSavers();
}

void LogindSession::findSession()
{
    ask(m_system, {kLogin, kLoginPath, kLoginManager, u"GetSessionByPID"_s, {quint32(::getpid())}}, this,
        [this](const QVariant &session) {
            const auto path = session.value<QDBusObjectPath>().path();
            if (path.isEmpty())
                findDisplaySession();
            else
                followSession(path);
        });
}

/// A program that the user's service manager started belongs to no session: the user's graphical one is used then.
void LogindSession::findDisplaySession()
{
    ask(m_system, propertyOf(kLogin, u"/org/freedesktop/login1/user/self"_s, u"org.freedesktop.login1.User"_s, u"Display"_s),
        this, [this](const QVariant &display) {
            // A struct of the session's name and path.
            if (!display.canConvert<QDBusArgument>())
                return;
            const auto structure = display.value<QDBusArgument>();
            QString name;
            QDBusObjectPath path;
            structure.beginStructure();
            structure >> name >> path;
            structure.endStructure();
            if (path.path().size() > 1)
                followSession(path.path());
        });
}

void LogindSession::followSession(const QString &path)
{
    m_system.connect(kLogin, path, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s, this,
                     SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
    m_system.connect(kLogin, path, kLoginSession, u"Lock"_s, this, SLOT(lockRequested()));
    m_system.connect(kLogin, path, kLoginSession, u"Unlock"_s, this, SLOT(unlockRequested()));
    ask(m_system, propertyOf(kLogin, path, kLoginSession, u"LockedHint"_s), this,
        [this](const QVariant &locked) { setHint(locked.toBool()); });
}

void LogindSession::propertiesChanged(const QString &interface, const QVariantMap &changed, const QStringList &)
{
    if (interface == kLoginSession && changed.contains(u"LockedHint"_s))
        setHint(changed.value(u"LockedHint"_s).toBool());
}

void LogindSession::setHint(bool locked)
{
    m_hint = locked;
    // A locker that sets the hint takes over from the request, and reports the end of the lock too.
    m_requested = false;
    m_request.reset();
    update();
}

void LogindSession::lockRequested()
{
    m_requested = true;
    m_request = m_clock.after(kRequestHolds, [this] {
        m_requested = false;
        update();
    });
    update();
}

void LogindSession::unlockRequested()
{
    setHint(false);
}

void LogindSession::preparesForSleep(bool sleeping)
{
    if (!sleeping)
        Q_EMIT woke();
}

void LogindSession::followSavers()
{
    connect(&m_saverOwners, &DBusOwners::came, this, &LogindSession::askSaver);
    // A screen saver that crashed can't report its end.
    connect(&m_saverOwners, &DBusOwners::gone, this, [this](const QString &service) { setSaver(service, false); });
    for (const auto &saver : kSavers) {
        // Without a service name: with one, the call would block until the bus says who owns it.
        m_session.connect(QString(), saver.path, saver.interface, u"ActiveChanged"_s, this,
                          SLOT(saverChanged(bool, QDBusMessage)));
        m_saverOwners.follow(m_session, saver.interface);
    }
}

void LogindSession::askSaver(const QString &service)
{
    const auto *const saver = std::ranges::find_if(kSavers, [&service](const Saver &each) { return service == each.interface; });
    ask(m_session, {saver->interface, saver->path, saver->interface, u"GetActive"_s, {}}, this,
        [this, service](const QVariant &active) {
            if (active.isValid())
                setSaver(service, active.toBool());
        });
}

void LogindSession::saverChanged(bool active, const QDBusMessage &signal)
{
    if (m_saverOwners.sent(signal, signal.interface()))
        setSaver(signal.interface(), active);
}

void LogindSession::setSaver(const QString &interface, bool active)
{
    if (active)
        m_savers.insert(interface);
    else if (m_savers.remove(interface) && m_requested) {
        m_requested = false;
        m_request.reset();
    }
    update();
}

void LogindSession::setLockerRuns(bool runs)
{
    if (std::exchange(m_lockerRuns, runs) == runs)
        return;
    // The locker answers a request, and its end is the end of the lock too.
    m_requested = false;
    m_request.reset();
    update();
}

void LogindSession::update()
{
    const bool now = m_hint || m_requested || m_lockerRuns || !m_savers.isEmpty();
    if (std::exchange(m_locked, now) != now)
        Q_EMIT lockedChanged();
}

} // namespace velto
