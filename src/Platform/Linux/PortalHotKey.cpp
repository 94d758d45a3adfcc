#include "Platform/Linux/PortalHotKey.h"

#include "Platform/Defaults.h"
#include "Platform/Linux/DBusAsk.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

/// "(sa{sv})", the portal's type for a shortcut.
struct PortalShortcut {
    QString id;
    QVariantMap options;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.options;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.options;
    argument.endStructure();
    return argument;
}

namespace {

constexpr auto kPortal = "org.freedesktop.portal.Desktop"_L1;
constexpr auto kPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto kShortcuts = "org.freedesktop.portal.GlobalShortcuts"_L1;
constexpr auto kRegistry = "org.freedesktop.host.portal.Registry"_L1;
constexpr auto kRequest = "org.freedesktop.portal.Request"_L1;
constexpr auto kId = "open-and-search"_L1;
constexpr auto kDeclined = "globalKeyDeclined"_L1;
constexpr uint kCancelled = 1; // by the user; 2 is any other failure

/// The trigger of our one shortcut, in the desktop's words; nothing if it isn't in the list.
std::optional<QString> triggerOf(const QVariant &shortcuts)
{
    const auto list = qdbus_cast<QList<PortalShortcut>>(shortcuts);
    for (const auto &shortcut : list)
        if (shortcut.id == kId)
            return shortcut.options.value(u"trigger_description"_s).toString();
    return std::nullopt;
}

} // namespace

PortalHotKey::PortalHotKey(Defaults &defaults, const QString &application, std::function<QDBusConnection()> sessionBus,
                           QObject *parent)
    : HotKey(parent)
    , m_defaults(defaults)
    , m_application(application)
    , m_sessionBus(std::move(sessionBus))
    , m_support{Support::State::Missing, {}}
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
}

bool PortalHotKey::registerHotKey(std::function<void()> action)
{
    m_action = std::move(action);
    connect(&m_owners, &DBusOwners::gone, this, &PortalHotKey::portalGone);
    connect(&m_owners, &DBusOwners::came, this, [this] {
        if (std::exchange(m_lost, false))
            lookForPortal();
    });
    m_owners.follow(m_sessionBus(), kPortal);
    lookForPortal();
    return true;
}

void PortalHotKey::lookForPortal()
{
    const auto bus = m_sessionBus();
    // Outside a sandbox the portal identifies a program by what it registers here before anything else. Older portals lack
    // this.
    ask(bus,
        {.service = kPortal,
         .path = kPath,
         .interface = kRegistry,
         .method = u"Register"_s,
         .arguments = {m_application, QVariantMap()},
         .start = true},
        this, [this, bus](const QVariant &) {
            ask(bus, propertyOf(kPortal, kPath, kShortcuts, u"version"_s), this, [this, bus](const QVariant &version) {
                if (version.toUInt() > 0) {
                    createSession();
                    return;
                }
                const QString desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP").section(u':', -1);
                ask(bus, propertyOf(u"org.gnome.Shell"_s, u"/org/gnome/Shell"_s, u"org.gnome.Shell"_s, u"ShellVersion"_s), this,
                    [this, desktop](const QVariant &shell) {
                        missing(shell.isValid() ? QString("GNOME %1"_L1).arg(shell.toString().section(u'.', 0, 0)) : desktop);
                    });
            });
        });
}

/// It may crash, or be replaced by an update; its session is gone then.
void PortalHotKey::portalGone()
{
    m_lost = true;
    m_session = {};
    become({Support::State::Missing, tr("The desktop's portal for global keys has ended")});
}

void PortalHotKey::sessionClosed()
{
    m_session = {};
    become({Support::State::Denied, tr("The desktop has taken Velto's global key back")});
}

void PortalHotKey::missing(const QString &desktop)
{
    const QString who = desktop.isEmpty() ? tr("This desktop") : desktop;
    become({Support::State::Missing,
            tr("%1 gives no program a global key: bind one to \"velto --search\" in its settings").arg(who)});
}

void PortalHotKey::become(const Support &support, const QString &keys)
{
    const bool different = support != m_support || keys != m_keys;
    m_support = support;
    m_keys = keys;
    if (different)
        Q_EMIT changed();
}

void PortalHotKey::request(const QString &method, const QVariantList &arguments, QVariantMap options, const char *slot)
{
    auto bus = m_sessionBus();
    const QString token = QString("velto%1"_L1).arg(++m_requests);
    options.insert(u"handle_token"_s, token);
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    bus.connect(kPortal, QString("/org/freedesktop/portal/desktop/request/%1/%2"_L1).arg(sender, token), kRequest, u"Response"_s,
                this, slot);
    auto all = arguments;
    all.append(options);
    ask(bus, {.service = kPortal, .path = kPath, .interface = kShortcuts, .method = method, .arguments = all}, this,
        [this](const QVariant &handle) {
            if (!handle.isValid())
                missing({});
        });
}

void PortalHotKey::createSession()
{
    request(u"CreateSession"_s, {}, {{u"session_handle_token"_s, u"velto"_s}}, SLOT(sessionAnswered(uint, QVariantMap)));
}

void PortalHotKey::sessionAnswered(uint code, const QVariantMap &results)
{
    m_session = QDBusObjectPath(results.value(u"session_handle"_s).toString());
    if (code != 0 || m_session.path().isEmpty()) {
        missing({});
        return;
    }
    auto bus = m_sessionBus();
    // A later session has the same path as the first.
    if (!std::exchange(m_listening, true)) {
        bus.connect(kPortal, kPath, kShortcuts, u"Activated"_s, this,
                    SLOT(activated(QDBusObjectPath, QString, qulonglong, QVariantMap)));
        bus.connect(kPortal, kPath, kShortcuts, u"ShortcutsChanged"_s, this, SLOT(shortcutsChanged(QDBusMessage)));
        bus.connect(kPortal, m_session.path(), u"org.freedesktop.portal.Session"_s, u"Closed"_s, this, SLOT(sessionClosed()));
    }
    if (m_defaults.value(kDeclined).toBool())
        bindAnswered(kCancelled, {});
    else
        bind();
}

void PortalHotKey::askAgain()
{
    if (!canAskAgain())
        return;
    m_defaults.set(kDeclined, false);
    if (m_session.path().isEmpty())
        createSession();
    else
        bind();
}

void PortalHotKey::bind()
{
    const PortalShortcut shortcut{kId, {{u"description"_s, tr("Open Velto")}, {u"preferred_trigger"_s, u"CTRL+ALT+n"_s}}};
    request(u"BindShortcuts"_s, {QVariant::fromValue(m_session), QVariant::fromValue(QList<PortalShortcut>{shortcut}), QString()},
            {}, SLOT(bindAnswered(uint, QVariantMap)));
}

void PortalHotKey::bindAnswered(uint code, const QVariantMap &results)
{
    const auto trigger = code == 0 ? triggerOf(results.value(u"shortcuts"_s)) : std::nullopt;
    if (const bool declined = code == kCancelled; declined != m_defaults.value(kDeclined).toBool())
        m_defaults.set(kDeclined, declined);
    if (trigger)
        become({}, *trigger);
    else
        become({Support::State::Denied,
                tr("You gave Velto no global key: bind one to \"velto --search\" in your desktop's settings")});
}

void PortalHotKey::activated(const QDBusObjectPath &session, const QString &shortcut, qulonglong, const QVariantMap &)
{
    if (session == m_session && shortcut == kId && m_action)
        m_action();
}

void PortalHotKey::shortcutsChanged(const QDBusMessage &message)
{
    const auto arguments = message.arguments();
    if (arguments.size() < 2 || qdbus_cast<QDBusObjectPath>(arguments.first()) != m_session)
        return;
    if (const auto trigger = triggerOf(arguments.at(1)))
        become({}, *trigger);
}

} // namespace velto

Q_DECLARE_METATYPE(velto::PortalShortcut)
