#pragma once

#include "World.h"

#include "Design/TabOrder.h"
#include "Shell/PanelContents.h"
#include "Shell/PanelKeys.h"
#include "Shell/UI.h"
#include "Tabs/Todos/TodosSource.h"

#include <QQuickView>
#include <QTest>
#include <memory>

class QQuickItem;

namespace velto {

/// The tab on the real store, with the panel's keys, in a window of its own. A warning of QML fails the test. It is the morning
/// of Saturday, 21 November 2026.
class TodosPage : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

protected:
    /// Opens the tab on these todos, which stand in Velto's own file.
    void show(const QList<Todo> &todos = {}, int height = 408);
    void close();
    /// Three for today, of which one is overdue, and two for later.
    static QList<Todo> some();
    static QList<Todo> many(int count);

    TodosSource &source() { return *m_world->hub.todos(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString &text);
    void click(QQuickItem *item);

    /// The todos' rows in sight, from top to bottom.
    QList<QQuickItem *> rows() const;
    QStringList titles() const;
    QQuickItem *row(const QString &title) const;
    QQuickItem *list() const;
    /// The visible item with this accessible name; null if there is none.
    QQuickItem *named(const QString &name) const;
    static QString nameOf(QQuickItem *item);
    /// What a screen reader says of the item with the keyboard.
    QString focused() const;

    std::unique_ptr<World> m_world;
    std::unique_ptr<UI> m_ui;
    std::unique_ptr<PanelContents> m_contents;
    std::unique_ptr<QQuickView> m_view;
    std::unique_ptr<PanelKeys> m_keys;
    std::unique_ptr<TabOrder> m_tabOrder;
};

} // namespace velto
