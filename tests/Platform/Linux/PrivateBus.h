#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QHash>
#include <QProcess>
#include <QTemporaryDir>
#include <functional>
#include <optional>

/// A bus of the test's own, without services.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();

    bool works() const { return !m_address.isEmpty(); }
    const QString &address() const { return m_address; }
    /// Another connection to it.
    QDBusConnection connect();

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
    QStringList m_names;
};

/// A service that answers every call as set, under any path.
class PlayedService final : public QDBusVirtualObject {
public:
    PlayedService(QDBusConnection bus, const QString &name);
    ~PlayedService() override;

    /// By "Method" or, for properties, "Get:Property".
    QHash<QString, QVariant> answers;
    QStringList asked;

    void emitSignal(const QString &path, const QString &interface, const QString &name, const QVariantList &arguments);
    void emitPropertyChange(const QString &path, const QString &interface, const QString &property, const QVariant &value);

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override;

private:
    QDBusConnection m_bus;
    QString m_name;
};
