#include "Platform/Linux/SecretSearch.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QMap>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

using Attributes = QMap<QString, QString>;

bool keyringHolds(const QString &schema, const QString &name, std::chrono::milliseconds limit)
{
    qDBusRegisterMetaType<Attributes>();
    auto search = QDBusMessage::createMethodCall(u"org.freedesktop.secrets"_s, u"/org/freedesktop/secrets"_s,
                                                 u"org.freedesktop.Secret.Service"_s, u"SearchItems"_s);
    search << QVariant::fromValue(Attributes{{u"xdg:schema"_s, schema}, {u"service"_s, name}});
    const QDBusMessage reply = QDBusConnection::sessionBus().call(search, QDBus::Block, int(limit.count()));
    // The unlocked items, then the locked ones.
    const auto found = reply.arguments();
    return reply.type() == QDBusMessage::ReplyMessage
        && std::ranges::any_of(found, [](const QVariant &items) { return !qdbus_cast<QList<QDBusObjectPath>>(items).isEmpty(); });
}

} // namespace velto
