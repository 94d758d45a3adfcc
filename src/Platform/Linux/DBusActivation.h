#pragma once

#include "Platform/Activation.h"
#include "Platform/Posix/FolderLock.h"

#include <QDBusConnection>
#include <chrono>
#include <functional>

namespace velto {

/// The interface org.freedesktop.Application of the session bus (Desktop Entry Specification 1.5, "D-Bus Activation"). Who
/// comes first is decided by a lock on the folder of the settings, so that a start waits for no bus and works without one.
class DBusActivation final : public Activation {
    Q_OBJECT
public:
    /// `name` is both the name on the bus and that of the desktop entry. `patience` is how long handOver() waits for a
    /// program that has just started to come to the bus, and then again for its answer.
    DBusActivation(const QString &configuration, QString name,
                   std::function<QDBusConnection()> sessionBus = &QDBusConnection::sessionBus,
                   std::chrono::milliseconds patience = std::chrono::seconds(5), QObject *parent = nullptr);

    bool claim() override;
    bool handOver(const QStringList &actions) override;
    void listen(bool startedForIt) override;

private:
    friend class ApplicationInterface;
    bool waitForTheOther(const QDBusConnection &bus);
    void asked(const QString &action);

    FolderLock m_lock;
    QString m_name;
    QString m_path;
    std::function<QDBusConnection()> m_sessionBus;
    std::chrono::milliseconds m_patience;
    bool m_startedForIt = false;
    bool m_listening = false;
};

} // namespace velto
