#pragma once

#include <QPointer>
#include <QQuickPaintedItem>
#include <QtQml/qqml.h>
#include <memory>

class QTimer;

namespace velto {

class Theme;

/// A small item that moves for as long as it is on show. It draws at a rate of its own instead of the display's, since a
/// pulse in the strip may run for hours; each step repaints the item's own few pixels and nothing else. All that move at one
/// rate make their steps in the same frames. It is still, without a timer, while it is hidden, while its window is, and while
/// motion is reduced or a picture is taken.
class MovingItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ANONYMOUS
public:
    /// A step every `interval` milliseconds.
    explicit MovingItem(int interval, QQuickItem *parent = nullptr);

protected:
    /// Whether the item should move if nothing else prevents it. Call follow() when this changes.
    virtual bool wantsToMove() const = 0;
    /// Whether the eye would miss this step if it weren't drawn: asked once for each.
    virtual bool stepShows() { return true; }
    void follow();
    /// Milliseconds of motion so far, counted in steps; 0 whenever it is still.
    int elapsed() const { return m_elapsed; }

    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    bool mayMove() const;
    void step();

    const int m_interval;
    int m_elapsed = 0;
    std::shared_ptr<QTimer> m_timer;
    QPointer<Theme> m_theme;
    QMetaObject::Connection m_windowShown;
};

} // namespace velto
