#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QObject>

class QDBusServiceWatcher;

namespace velto {

/// Who owns the names of the services we listen to. Any program may send any signal, so one counts only if it comes from
/// the owner of the name; letting the toolkit look that up would wait for the bus.
class DBusOwners final : public QObject {
    Q_OBJECT
public:
    explicit DBusOwners(QObject *parent = nullptr);

    /// Asks for the owner and follows it from then on; doesn't block.
    void follow(const QDBusConnection &bus, const QString &service);
    /// Whether the signal comes from the owner of that service's name.
    bool sent(const QDBusMessage &signal, const QString &service) const;

Q_SIGNALS:
    /// The service has a new owner; what the previous one said no longer holds.
    void came(const QString &service);
    void gone(const QString &service);

private:
    void setOwner(const QString &service, const QString &owner);

    QDBusServiceWatcher *m_watcher = nullptr;
    QHash<QString, QString> m_owners;
};

} // namespace velto
