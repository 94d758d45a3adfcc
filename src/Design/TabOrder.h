#pragma once

#include <QObject>

class QQuickItem;
class QQuickWindow;

namespace velto {

/// The item that keeps the keyboard and the pointer to itself in this window: the last open one with a true property
/// `trapsFocus`. Null if there is none.
QQuickItem *openTrap(const QQuickWindow &window);

/// Tab and Shift-Tab go through a window's controls as they are laid out, row by row: the toolkit goes by creation order,
/// which a scrolling list shuffles. What has a true property `comesFirst` comes before the rest; what has a true property
/// `staysTogether` is gone through before what is beside it. While something with a true property `trapsFocus` is open they
/// stay inside it. UI thread only.
class TabOrder : public QObject {
    Q_OBJECT
public:
    /// Listens to the keys of `window`, which outlives this.
    explicit TabOrder(QQuickWindow &window, QObject *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void step(bool forward);

    QQuickWindow &m_window;
};

} // namespace velto
