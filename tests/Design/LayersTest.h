#pragma once

#include "Design/TabOrder.h"

#include <QObject>
#include <QQuickView>
#include <memory>

class QQuickItem;

namespace velto {

/// Where Tab goes, and what stands over everything else: menus and sheets.
class LayersTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup();

    void tabGoesAsTheControlsStand();
    void tabPassesAScrolledListAsOne();
    void aMenuIsWorkedByKeys();
    void aMenuClosesByAPressElsewhere();
    void anOpenMenuGoesWithItsWindow();
    void aSheetKeepsTheKeyboard();

private:
    /// Shows the QML in a window of 400 by 300.
    void show(const QString &qml);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// What a screen reader says of the control that has the keyboard.
    QString focused() const;

    std::unique_ptr<QQuickView> m_view;
    std::unique_ptr<TabOrder> m_tabOrder;
    QQuickItem *m_root = nullptr;
};

} // namespace velto
