#pragma once

#include "Platform/Linux/X11/XcbServer.h"
#include "Platform/StatusItem.h"

#include <QDBusConnection>
#include <QObject>
#include <memory>

class QMenu;
class QSystemTrayIcon;

namespace velto {

/// The icon in the desktop's tray. The toolkit asks once, when the first icon is made, which kind of tray there is, and keeps
/// the answer: so none is made before a tray is there, which at login may be long after us. Pressing the icon does what the
/// menu's first item does. Needs QApplication.
class TrayStatusItem final : public QObject, public StatusItem {
    Q_OBJECT
public:
    /// `sessionBus` is asked for at show(): connecting takes time that the start doesn't have.
    explicit TrayStatusItem(XcbServer &server, std::function<QDBusConnection()> sessionBus = &QDBusConnection::sessionBus,
                            QObject *parent = nullptr);
    ~TrayStatusItem() override;

    void show(const QString &description, std::vector<MenuItem> menu) override;

    bool eventFilter(QObject *watched, QEvent *event) override;

    /// Whether the icon stands in a tray.
    bool inTray() const { return m_icon != nullptr; }

private Q_SLOTS:
    void lookForHost();

private:
    void lookForOlderTray();
    void makeIcon();
    QMenu *menu();

    XcbServer &m_server;
    std::function<QDBusConnection()> m_sessionBus;
    QString m_description;
    std::vector<MenuItem> m_items;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    bool m_watching = false;
};

} // namespace velto
