#pragma once

#include "RunTests.h"

#include "Design/TabOrder.h"

#include <QAccessible>
#include <QQuickItem>
#include <QQuickView>

namespace velto {

/// A window in which the user sees and uses something, with the keyboard, the pointer or a screen reader. A QML warning fails
/// the test.
class ViewWindow : public QObject {
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    /// Shows the QML, which may use the design's controls, and returns its root; null if that failed.
    QQuickItem *showQml(const QString &qml, QSize size, const QVariantMap &properties = {});
    /// An empty window.
    void begin();
    void appear(QSize size);
    virtual void close();

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString &text);
    void click(QQuickItem *item);

    /// Every visible item, in drawing order.
    QList<QQuickItem *> items() const;
    /// The visible content of `root` (of everything, by default), line by line, the pieces of a line separated by " | ": a text
    /// as it is shown, a symbol as its name in brackets, a dot as "*", each after the name of its colour if it has one:
    /// "coral:(exclamationmark)".
    QStringList seen(const QQuickItem *root = nullptr) const;
    /// The items with this property true, from top to bottom.
    QList<QQuickItem *> rowsWith(const char *property) const;
    QQuickItem *list() const;
    /// The first item with this name for screen readers; null if there is none.
    QQuickItem *named(const QString &name) const;
    /// The first of them that Tab reaches.
    QQuickItem *button(const QString &name) const;
    /// What a screen reader reads out.
    static QString nameOf(QQuickItem *item, QAccessible::Text kind = QAccessible::Name);
    /// What it reads out for the focused item.
    QString focused() const;

    std::unique_ptr<QQuickView> m_view;
    std::unique_ptr<TabOrder> m_tabOrder;
};

} // namespace velto
