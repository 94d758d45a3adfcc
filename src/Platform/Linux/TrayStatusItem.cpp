#include "Platform/Linux/TrayStatusItem.h"

#include "Platform/Linux/DBusAsk.h"

#include <QDBusServiceWatcher>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

// https://www.freedesktop.org/wiki/Specifications/StatusNotifierItem/StatusNotifierWatcher/
constexpr auto kWatcher = "org.kde.StatusNotifierWatcher"_L1; // service and interface
constexpr auto kWatcherPath = "/StatusNotifierWatcher"_L1;

} // namespace

TrayStatusItem::TrayStatusItem(XcbServer &server, std::function<QDBusConnection()> sessionBus, QObject *parent)
    : QObject(parent)
    , m_server(server)
    , m_sessionBus(std::move(sessionBus))
{
}

TrayStatusItem::~TrayStatusItem() = default;

void TrayStatusItem::show(const QString &description, std::vector<MenuItem> menu, std::function<void()> openMenu)
{
    m_description = description;
    m_items = std::move(menu);
    m_openMenu = std::move(openMenu);
    if (m_notifier) {
        m_notifier->describe(m_description);
        m_notifier->menu().setItems(m_items);
    }
    if (!std::exchange(m_following, true))
        follow();
    lookForTray();
}

void TrayStatusItem::follow()
{
    if (m_server.exists()) {
        m_server.followSelection(m_server.atom(XcbAtom::SystemTray));
        connect(&m_server, &XcbServer::selectionOwnerChanged, this, [this](xcb_atom_t selection) {
            if (selection != m_server.atom(XcbAtom::SystemTray) || (m_older && m_older->isIn(m_server.selectionOwner(selection))))
                return;
            m_older.reset();
            lookForTray();
        });
    }
    auto bus = m_sessionBus();
    if (!bus.isConnected())
        return;
    auto *watcher = new QDBusServiceWatcher(kWatcher, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] {
        m_onBus = false;
        lookForTray();
    });
    for (const auto &change : {u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s})
        bus.connect(QString(), kWatcherPath, kWatcher, change, this, SLOT(lookForTray()));
}

/// A watcher alone shows nothing: it takes a host, which draws the items that the watcher knows.
void TrayStatusItem::lookForTray()
{
    const auto bus = m_sessionBus();
    if (!bus.isConnected()) {
        takeTray(false);
        return;
    }
    ask(bus, propertyOf(kWatcher, kWatcherPath, kWatcher, u"IsStatusNotifierHostRegistered"_s), this,
        [this](const QVariant &registered) { takeTray(registered.toBool()); });
}

void TrayStatusItem::takeTray(bool onBus)
{
    if (onBus) {
        m_older.reset();
        if (!m_notifier) {
            m_notifier = std::make_unique<StatusNotifier>(m_sessionBus(), m_description);
            m_notifier->menu().setItems(m_items);
            connect(m_notifier.get(), &StatusNotifier::pressed, this, &TrayStatusItem::press);
            connect(m_notifier.get(), &StatusNotifier::menuWanted, this, [this] { m_openMenu(); });
        }
        if (!std::exchange(m_onBus, true))
            m_notifier->announce();
        return;
    }
    m_onBus = false;
    const auto tray = m_server.selectionOwner(m_server.atom(XcbAtom::SystemTray));
    if (m_older || tray == kNoWindow)
        return;
    m_older = std::make_unique<XembedIcon>(m_server, tray, m_description);
    connect(m_older.get(), &XembedIcon::pressed, this, &TrayStatusItem::press);
    connect(m_older.get(), &XembedIcon::menuWanted, this, [this] { m_openMenu(); });
}

void TrayStatusItem::press() const
{
    if (!m_items.empty() && m_items.front().action)
        m_items.front().action();
}

} // namespace velto
