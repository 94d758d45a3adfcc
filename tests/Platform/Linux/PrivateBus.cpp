#include "PrivateBus.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QFile>

using namespace Qt::StringLiterals;

PrivateBus::PrivateBus()
{
    QFile configuration(m_folder.filePath(u"bus.conf"_s));
    if (!configuration.open(QIODevice::WriteOnly))
        return;
    configuration.write(R"(<busconfig><type>session</type><listen>unix:dir=)" + QFile::encodeName(m_folder.path())
                        + R"(</listen><auth>EXTERNAL</auth><policy context="default"><allow send_destination="*"/>)"
                          R"(<allow receive_sender="*"/><allow own="*"/></policy></busconfig>)");
    configuration.close();
    m_daemon.start(u"dbus-daemon"_s, {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + configuration.fileName()});
    if (m_daemon.waitForStarted() && m_daemon.waitForReadyRead())
        m_address = QString::fromUtf8(m_daemon.readAllStandardOutput()).trimmed();
}

PrivateBus::~PrivateBus()
{
    for (const auto &name : m_names)
        QDBusConnection::disconnectFromBus(name);
    m_daemon.kill();
    m_daemon.waitForFinished();
}

QDBusConnection PrivateBus::connect()
{
    static int number = 0;
    m_names.append(u"private-%1"_s.arg(++number));
    return QDBusConnection::connectToBus(m_address, m_names.last());
}

PlayedService::PlayedService(QDBusConnection bus, const QString &name)
    : m_bus(std::move(bus))
    , m_name(name)
{
    m_bus.registerVirtualObject(u"/"_s, this, QDBusConnection::SubPath);
    m_bus.registerService(name);
}

PlayedService::~PlayedService()
{
    m_bus.unregisterObject(u"/"_s, QDBusConnection::UnregisterTree);
    m_bus.unregisterService(m_name);
}

void PlayedService::emitSignal(const QString &path, const QString &interface, const QString &name, const QVariantList &arguments)
{
    auto message = QDBusMessage::createSignal(path, interface, name);
    message.setArguments(arguments);
    m_bus.send(message);
}

void PlayedService::emitPropertyChange(const QString &path, const QString &interface, const QString &property,
                                       const QVariant &value)
{
    emitSignal(path, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s,
               {interface, QVariantMap{{property, value}}, QStringList()});
}

bool PlayedService::handleMessage(const QDBusMessage &message, const QDBusConnection &bus)
{
    auto key = message.member();
    const bool property = key == "Get"_L1;
    if (property)
        key = u"Get:"_s + message.arguments().value(1).toString();
    asked.append(key);
    if (!answers.contains(key))
        return false;
    const auto answer = answers.value(key);
    bus.send(message.createReply(property ? QVariant::fromValue(QDBusVariant(answer)) : answer));
    return true;
}
