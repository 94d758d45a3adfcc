#include "Platform/Linux/DBusOwners.h"

#include "Platform/Linux/DBusAsk.h"

#include <QDBusServiceWatcher>

using namespace Qt::StringLiterals;

namespace velto {

DBusOwners::DBusOwners(QObject *parent)
    : QObject(parent)
{
}

void DBusOwners::follow(const QDBusConnection &bus, const QString &service)
{
    if (!m_watcher) {
        m_watcher = new QDBusServiceWatcher(this);
        m_watcher->setConnection(bus);
        m_watcher->setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
        connect(m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
                [this](const QString &name, const QString &, const QString &owner) { setOwner(name, owner); });
    }
    m_watcher->addWatchedService(service);
    const auto name = u"org.freedesktop.DBus"_s;
    ask(bus, {name, u"/org/freedesktop/DBus"_s, name, u"GetNameOwner"_s, {service}}, this,
        [this, service](const QVariant &owner) {
            // The toolkit may deliver this answer after a change that came later.
            if (!m_owners.contains(service))
                setOwner(service, owner.toString());
        });
}

bool DBusOwners::sent(const QDBusMessage &signal, const QString &service) const
{
    const QString owner = m_owners.value(service);
    return !owner.isEmpty() && signal.service() == owner;
}

void DBusOwners::setOwner(const QString &service, const QString &owner)
{
    const QString before = m_owners.value(service);
    m_owners.insert(service, owner);
    if (before == owner)
        return;
    if (!before.isEmpty())
        Q_EMIT gone(service);
    if (!owner.isEmpty())
        Q_EMIT came(service);
}

} // namespace velto
