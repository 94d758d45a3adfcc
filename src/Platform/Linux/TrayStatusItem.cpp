#include "Platform/Linux/TrayStatusItem.h"

#include "Platform/Linux/DBusAsk.h"
#include "Platform/Linux/StatusIcon.h"

#include <QAction>
#include <QDBusServiceWatcher>
#include <QKeyEvent>
#include <QMenu>
#include <QSystemTrayIcon>

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

void TrayStatusItem::show(const QString &description, std::vector<MenuItem> menu)
{
    m_description = description;
    m_items = std::move(menu);
    if (m_icon)
        m_icon->setContextMenu(nullptr);
    if (m_menu)
        m_menu->close();
    m_menu.reset();
    if (m_icon) {
        m_icon->setContextMenu(this->menu());
        m_icon->setToolTip(m_description);
    }
    if (m_watching)
        return;
    m_watching = true;
    if (m_server.exists()) {
        m_server.followSelection(m_server.atom(XcbAtom::SystemTray));
        connect(&m_server, &XcbServer::selectionOwnerChanged, this, [this](xcb_atom_t selection) {
            if (selection == m_server.atom(XcbAtom::SystemTray))
                lookForHost();
        });
    }
    auto bus = m_sessionBus();
    if (bus.isConnected()) {
        auto *watcher = new QDBusServiceWatcher(kWatcher, bus, QDBusServiceWatcher::WatchForRegistration, this);
        connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayStatusItem::lookForHost);
        bus.connect(QString(), kWatcherPath, kWatcher, u"StatusNotifierHostRegistered"_s, this, SLOT(lookForHost()));
    }
    lookForHost();
}

/// A watcher alone shows nothing: the toolkit uses this kind of tray only with a registered host.
void TrayStatusItem::lookForHost()
{
    if (m_icon)
        return;
    const auto bus = m_sessionBus();
    if (!bus.isConnected()) {
        lookForOlderTray();
        return;
    }
    ask(bus, propertyOf(kWatcher, kWatcherPath, kWatcher, u"IsStatusNotifierHostRegistered"_s), this,
        [this](const QVariant &registered) {
            if (registered.toBool())
                makeIcon();
            else
                lookForOlderTray();
        });
}

void TrayStatusItem::lookForOlderTray()
{
    if (m_server.selectionOwner(m_server.atom(XcbAtom::SystemTray)) != kNoWindow)
        makeIcon();
}

void TrayStatusItem::makeIcon()
{
    if (m_icon)
        return;
    m_icon = std::make_unique<QSystemTrayIcon>(statusIcon());
    m_icon->setToolTip(m_description);
    m_icon->setContextMenu(menu());
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger && !m_items.empty() && m_items.front().action)
            m_items.front().action();
    });
    m_icon->show();
}

QMenu *TrayStatusItem::menu()
{
    if (m_menu)
        return m_menu.get();
    m_menu = std::make_unique<QMenu>();
    m_menu->installEventFilter(this);
    for (const auto &item : m_items) {
        if (item.title.isEmpty()) {
            m_menu->addSeparator();
            continue;
        }
        auto *action = m_menu->addAction(QString(item.title).replace(u'&', u"&&"_s));
        if (item.key != QKeyCombination())
            action->setShortcut(QKeySequence(item.key));
        // On some platforms the toolkit guesses from its text which item is Quit or Settings.
        action->setMenuRole(QAction::NoRole);
        connect(action, &QAction::triggered, this, [run = item.action] {
            if (run)
                run();
        });
    }
    return m_menu.get();
}

/// The toolkit handles shortcuts for its active window only, and there is none under a menu over another program's windows.
bool TrayStatusItem::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_menu.get() && event->type() == QEvent::KeyPress) {
        const QKeySequence pressed(static_cast<QKeyEvent *>(event)->keyCombination());
        const auto actions = m_menu->actions();
        for (auto *action : actions) {
            if (action->shortcut().isEmpty() || action->shortcut() != pressed)
                continue;
            m_menu->close();
            action->trigger();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace velto
