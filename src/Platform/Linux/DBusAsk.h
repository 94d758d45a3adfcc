#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariant>
#include <chrono>
#include <functional>

namespace velto {

/// One method of one object of a service on a bus.
struct DBusMethod {
    QString service;
    QString path;
    QString interface;
    QString method;
    QVariantList arguments;
    bool start = false; ///< have the bus start the service if it doesn't run
    std::chrono::milliseconds limit{-1}; ///< how long to wait for the answer; negative: as long as the bus usually does
};

/// Calls it without waiting. `done` gets the first value of the answer, unwrapped from variants, or an invalid one after any
/// failure; on `context`'s thread, and never once that is gone.
void ask(const QDBusConnection &bus, const DBusMethod &method, QObject *context, std::function<void(QVariant)> done);

/// ask() for a property of an object.
DBusMethod propertyOf(const QString &service, const QString &path, const QString &interface, const QString &property);

} // namespace velto
