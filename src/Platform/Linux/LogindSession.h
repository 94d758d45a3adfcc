#pragma once

#include "Platform/Linux/DBusOwners.h"
#include "Platform/Session.h"
#include "Platform/Timer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QSet>

namespace velto {

class Clock;

/// Locked as long as logind's hint for the session or any of the desktops' screen savers says so, or a locker runs that doesn't
/// report it. A request to lock counts for a few seconds, until a locker has answered it: a strip that never comes back is worse.
/// Knows nothing before start(), and never blocks.
class LogindSession final : public Session {
    Q_OBJECT
public:
    explicit LogindSession(Clock &clock, QObject *parent = nullptr);

    void start(const QDBusConnection &system, const QDBusConnection &session);
    bool locked() const override { return m_locked; }
    /// A program that locks the screen runs, or has ended.
    void setLockerRuns(bool runs);

private Q_SLOTS:
    void propertiesChanged(const QString &interface, const QVariantMap &changed, const QStringList &invalidated);
    void lockRequested();
    void unlockRequested();
    void preparesForSleep(bool sleeping);
    void saverChanged(bool active, const QDBusMessage &signal);

private:
    void findSession();
    void findDisplaySession();
    void followSession(const QString &path);
    void followSavers();
    void askSaver(const QString &service);
    void setHint(bool locked);
    void setSaver(const QString &interface, bool active);
    void update();

    Clock &m_clock;
    QDBusConnection m_system;
    QDBusConnection m_session;
    DBusOwners m_saverOwners;
    bool m_hint = false;
    bool m_requested = false;
    bool m_lockerRuns = false;
    TimerHandle m_request;
    QSet<QString> m_savers; ///< the interfaces of those that are active
    bool m_locked = false;
};

} // namespace velto
