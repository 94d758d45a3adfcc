#include "Design/MovingItem.h"

#include "Design/Theme.h"

#include <QQmlEngine>
#include <QQuickWindow>
#include <QTimerEvent>

namespace velto {

MovingItem::MovingItem(int interval, QQuickItem *parent)
    : QQuickPaintedItem(parent)
    , m_interval(interval)
{
    setAntialiasing(true);
}

void MovingItem::componentComplete()
{
    QQuickPaintedItem::componentComplete();
    m_theme = Theme::of(qmlEngine(this));
    if (m_theme) {
        connect(m_theme, &Theme::motionChanged, this, &MovingItem::follow);
        connect(m_theme, &Theme::snapshotRenderingChanged, this, &MovingItem::follow);
    }
    follow();
}

void MovingItem::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickPaintedItem::itemChange(change, data);
    if (change == ItemSceneChange) {
        disconnect(m_windowShown);
        if (data.window)
            m_windowShown = connect(data.window, &QWindow::visibleChanged, this, &MovingItem::follow);
    }
    if (change == ItemSceneChange || change == ItemVisibleHasChanged)
        follow();
}

bool MovingItem::mayMove() const
{
    return isComponentComplete() && isVisible() && window() && window()->isVisible()
        && !(m_theme && (m_theme->reducedMotion() || m_theme->snapshotRendering()));
}

void MovingItem::follow()
{
    const bool moves = wantsToMove() && mayMove();
    if (moves == m_timer.isActive())
        return;
    m_elapsed = 0;
    if (moves)
        m_timer.start(m_interval, this);
    else
        m_timer.stop();
    update();
}

void MovingItem::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    m_elapsed += m_interval;
    update();
}

} // namespace velto
