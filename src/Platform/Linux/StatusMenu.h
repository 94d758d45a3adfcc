#pragma once

#include "Platform/StatusItem.h"

#include <QObject>

namespace velto {

/// The menu of the tray's icon as the session bus sees it (com.canonical.dbusmenu): the tray draws it in its own style, and this
/// program only says what is in it and hears what was chosen. To be exported with its adaptors. UI thread only.
class StatusMenu final : public QObject {
    Q_OBJECT
public:
    explicit StatusMenu(QObject *parent = nullptr);

    void setItems(std::vector<MenuItem> items);

Q_SIGNALS:
    void itemsChanged();

private:
    friend class MenuInterface;
    /// An item's number on the bus is its index and one; 0 is the menu itself.
    const MenuItem *item(int id) const;
    void choose(int id);

    std::vector<MenuItem> m_items;
};

} // namespace velto
