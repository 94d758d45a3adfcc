#include "Platform/Linux/DBusActivation.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QTimer>
#include <QVariantMap>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

const auto kInterface = "org.freedesktop.Application"_L1;
const auto kOpen = "open"_L1;
constexpr std::chrono::milliseconds kNextLook{50}; ///< at the lock of a program that may be ending

/// The object path that D-Bus activation derives from a name: dots become slashes, dashes underscores.
QString objectPath(const QString &name)
{
    return u'/' + QString(name).replace(u'.', u'/').replace(u'-', u'_');
}

} // namespace

/// The interface on the bus.
class ApplicationInterface final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    explicit ApplicationInterface(DBusActivation *activation)
        : QDBusAbstractAdaptor(activation)
        , m_activation(activation)
    {
    }

public Q_SLOTS:
    void Activate(const QVariantMap &) { m_activation->asked(kOpen); }
    void Open(const QStringList &, const QVariantMap &) { m_activation->asked(kOpen); }
    void ActivateAction(const QString &action, const QVariantList &, const QVariantMap &) { m_activation->asked(action); }

private:
    DBusActivation *m_activation;
};

DBusActivation::DBusActivation(const QString &configuration, QString name, std::function<QDBusConnection()> sessionBus,
                               std::chrono::milliseconds patience, QObject *parent)
    : Activation(parent)
    , m_lock(configuration)
    , m_name(std::move(name))
    , m_path(objectPath(m_name))
    , m_sessionBus(std::move(sessionBus))
    , m_patience(patience)
{
}

bool DBusActivation::claim()
{
    return m_lock.take();
}

// The other instance may have just started, and comes to the bus only after it has painted; or it is ending, and has left the
// bus.
bool DBusActivation::waitForTheOther(const QDBusConnection &bus)
{
    const QDBusServiceWatcher watcher(m_name, bus, QDBusServiceWatcher::WatchForRegistration);
    QEventLoop loop;
    connect(&watcher, &QDBusServiceWatcher::serviceRegistered, &loop, &QEventLoop::quit);
    if (bus.interface()->isServiceRegistered(m_name))
        return true;
    QTimer::singleShot(m_patience, &loop, [&loop] { loop.exit(1); });
    QTimer end;
    connect(&end, &QTimer::timeout, &loop, [this, &loop] {
        if (claim())
            loop.exit(1);
    });
    end.start(kNextLook);
    return loop.exec() == 0;
}

bool DBusActivation::handOver(const QStringList &actions)
{
    const auto bus = m_sessionBus();
    if (!bus.isConnected() || !waitForTheOther(bus))
        return false;
    return std::all_of(actions.begin(), actions.end(), [&](const QString &action) {
        const bool plain = action == kOpen;
        auto message = QDBusMessage::createMethodCall(m_name, m_path, kInterface, plain ? u"Activate"_s : u"ActivateAction"_s);
        if (!plain)
            message << action << QVariantList();
        message << QVariantMap();
        message.setAutoStartService(false);
        return bus.call(message, QDBus::Block, int(m_patience.count())).type() == QDBusMessage::ReplyMessage;
    });
}

void DBusActivation::listen(bool startedForIt)
{
    auto bus = m_sessionBus();
    if (m_listening || !bus.isConnected())
        return;
    m_listening = true;
    m_startedForIt = startedForIt;
    if (!findChild<ApplicationInterface *>())
        new ApplicationInterface(this); // owned by its parent
    // The object first: calls that wait for the name arrive at once.
    bus.registerObject(m_path, this, QDBusConnection::ExportAdaptors);
    bus.registerService(m_name);
}

void DBusActivation::asked(const QString &action)
{
    if (!std::exchange(m_startedForIt, false) || action != kOpen)
        Q_EMIT wanted(action);
}

} // namespace velto

#include "DBusActivation.moc"
