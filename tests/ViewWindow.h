#pragma once

#include "RunTests.h"

#include "Design/TabOrder.h"

#include <QAccessible>
#include <QQuickItem>
#include <QQuickView>

namespace velto {

/// A window in which a person sees and works something, with the keyboard, the pointer or a screen reader. A warning of QML fails
/// the test.
class ViewWindow : public QObject {
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    /// Shows the QML, which may use the design's controls, and returns its root; null if that failed.
    QQuickItem *showQml(const QString &qml, QSize size, const QVariantMap &properties = {});
    /// A window in which nothing stands yet.
    void begin();
    void appear(QSize size);
    virtual void close();

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString &text);
    void click(QQuickItem *item);

    /// Every visible item, in the order in which they are drawn.
    QList<QQuickItem *> items() const;
    /// What one sees of `root` (of all, by default), line by line, the pieces of a line parted by " | ": a text as it stands
    /// there, a symbol as its name in brackets, a dot as "*", each behind the name of its colour if it has one:
    /// "coral:(exclamationmark)".
    QStringList seen(const QQuickItem *root = nullptr) const;
    /// Those with this property true, from top to bottom.
    QList<QQuickItem *> rowsWith(const char *property) const;
    QQuickItem *list() const;
    /// The first item that a screen reader calls this; null if there is none.
    QQuickItem *named(const QString &name) const;
    /// The first that Tab reaches besides.
    QQuickItem *button(const QString &name) const;
    /// What a screen reader says.
    static QString nameOf(QQuickItem *item, QAccessible::Text kind = QAccessible::Name);
    /// What it says of the item with the keyboard.
    QString focused() const;

    std::unique_ptr<QQuickView> m_view;
    std::unique_ptr<TabOrder> m_tabOrder;
};

} // namespace velto
