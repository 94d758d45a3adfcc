#include "Platform/Linux/DBusAsk.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

QVariant firstValue(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage)
        return {};
    // A reply without a value is a success too.
    auto value = reply.arguments().value(0, true);
    // The desktop portal wraps a variant in a variant.
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

void ask(const QDBusConnection &bus, const DBusMethod &method, QObject *context, std::function<void(QVariant)> done)
{
    auto message = QDBusMessage::createMethodCall(method.service, method.path, method.interface, method.method);
    message.setArguments(method.arguments);
    message.setAutoStartService(method.start);
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, int(method.limit.count())), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [done = std::move(done)](QDBusPendingCallWatcher *finished) {
                         finished->deleteLater();
                         done(firstValue(finished->reply()));
                     });
}

DBusMethod propertyOf(const QString &service, const QString &path, const QString &interface, const QString &property)
{
    return {service, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {interface, property}};
}

} // namespace velto
