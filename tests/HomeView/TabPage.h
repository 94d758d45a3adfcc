#pragma once

#include "World.h"

#include "Design/TabOrder.h"
#include "Shell/UI.h"

#include <QQuickView>
#include <QTest>
#include <memory>

class QQuickItem;

namespace velto {

/// A tab on its real store, in a window of its own. A warning of QML fails the test.
class TabPage : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

protected:
    void show(VeltoSource &source);
    /// What is on show and has this name for a screen reader; the topmost one.
    QQuickItem *named(const QString &name) const;
    /// The names of all that Tab comes to in one round, each of which stands where it can be seen.
    QStringList tabRound();
    void click(QQuickItem *item);
    /// Frames that are drawn while the clock goes on by so much, with a refresh in between.
    qsizetype framesWhileNothingChanges(int milliseconds);
    static QString nameOf(QQuickItem *item);
    /// Every visible item below, in the order in which they are drawn.
    static QList<QQuickItem *> itemsBelow(QQuickItem *root);

    std::unique_ptr<World> m_world;
    std::unique_ptr<UI> m_ui;
    std::unique_ptr<QQuickView> m_view;
    std::unique_ptr<TabOrder> m_tabOrder;
};

} // namespace velto
