#pragma once

#include "World.h"

#include "Design/TabOrder.h"
#include "Shell/UI.h"

#include <QQuickView>
#include <QTest>
#include <memory>

class QQuickItem;

namespace velto {

/// The tab on the real store, in a window of its own. A warning of QML fails the test.
class AgentsPage : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

protected:
    void show();
    QQuickItem *row(const QString &id) const;
    /// From top to bottom.
    QList<QQuickItem *> rows() const;
    QQuickItem *button(const QString &name) const;
    /// Whether a screen reader finds this text.
    bool says(const QString &text) const;
    QQuickItem *list() const;
    void click(QQuickItem *item);
    /// What a screen reader says.
    static QString nameOf(QQuickItem *item);

    std::unique_ptr<World> m_world;
    std::unique_ptr<UI> m_ui;
    std::unique_ptr<QQuickView> m_view;
    std::unique_ptr<TabOrder> m_tabOrder;
};

} // namespace velto
