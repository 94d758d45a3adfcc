#pragma once

#include "Platform/Linux/StatusNotifier.h"
#include "Platform/Linux/X11/XcbServer.h"
#include "Platform/Linux/X11/XembedIcon.h"
#include "Platform/StatusItem.h"

#include <QDBusConnection>
#include <QObject>
#include <memory>

namespace velto {

/// The icon in the desktop's tray: in one on the session bus if there is any, else in one of the older kind. Trays come after us
/// at login, and come and go. Pressing the icon does what the menu's first item does.
class TrayStatusItem final : public QObject, public StatusItem {
    Q_OBJECT
public:
    /// `sessionBus` is asked for at show(): connecting takes time that the start doesn't have.
    explicit TrayStatusItem(XcbServer &server, std::function<QDBusConnection()> sessionBus = &QDBusConnection::sessionBus,
                            QObject *parent = nullptr);
    ~TrayStatusItem() override;

    void show(const QString &description, std::vector<MenuItem> menu, std::function<void()> openMenu) override;

    /// Whether a tray has been found for it.
    bool inTray() const { return m_onBus || m_older; }

private Q_SLOTS:
    void lookForTray();

private:
    void follow();
    void takeTray(bool onBus);
    void press() const;

    XcbServer &m_server;
    std::function<QDBusConnection()> m_sessionBus;
    QString m_description;
    std::vector<MenuItem> m_items;
    std::function<void()> m_openMenu;
    std::unique_ptr<StatusNotifier> m_notifier;
    std::unique_ptr<XembedIcon> m_older;
    bool m_following = false;
    bool m_onBus = false; ///< it is registered with a tray on the bus
};

} // namespace velto
