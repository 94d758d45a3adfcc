#pragma once

#include <QString>
#include <QtCore/qnamespace.h>
#include <functional>
#include <vector>

namespace velto {

struct MenuItem {
    QString title; ///< empty for a separator
    /// The key that does the same while the menu is open, and how it is written beside the title; may be empty.
    QKeyCombination key;
    QString keyText;
    std::function<void()> action;
};

/// The program's icon with its menu in the desktop's tray. The strip has the same menu, for desktops without a tray. UI thread
/// only.
class StatusItem {
public:
    StatusItem() = default;
    StatusItem(const StatusItem &) = delete;
    StatusItem &operator=(const StatusItem &) = delete;
    virtual ~StatusItem() = default;

    /// Puts the item into the tray now, or as soon as the desktop has one. `openMenu` shows the same menu elsewhere; it is called
    /// when the icon's menu is asked for in a tray that draws none.
    virtual void show(const QString &description, std::vector<MenuItem> menu, std::function<void()> openMenu) = 0;
};

} // namespace velto
