#pragma once

#include "Platform/Linux/StatusMenu.h"

#include <QDBusConnection>
#include <QObject>

namespace velto {

/// The program's icon for trays on the session bus (org.kde.StatusNotifierItem), with its menu. The tray draws both.
/// https://www.freedesktop.org/wiki/Specifications/StatusNotifierItem/StatusNotifierItem/ UI thread only.
class StatusNotifier final : public QObject {
    Q_OBJECT
public:
    /// Exports the icon on `bus`; no tray shows it before announce().
    StatusNotifier(QDBusConnection bus, const QString &description, QObject *parent = nullptr);
    ~StatusNotifier() override;

    StatusMenu &menu() { return m_menu; }
    const QString &description() const { return m_description; }
    void describe(const QString &description);
    /// Makes the desktop's trays show it. Never waits; announcing it twice does no harm.
    void announce();

Q_SIGNALS:
    void pressed();
    /// The tray can't draw a menu by itself.
    void menuWanted();
    void described();

private:
    QDBusConnection m_bus;
    QString m_description;
    StatusMenu m_menu;
};

} // namespace velto
