#include "Design/MovingItem.h"

#include "Design/Theme.h"

#include <QQmlEngine>
#include <QQuickWindow>
#include <QTimer>

namespace velto {

namespace {

/// The timer for this interval, shared as long as anyone holds it. UI thread.
std::shared_ptr<QTimer> sharedTimer(int interval)
{
    static QHash<int, std::weak_ptr<QTimer>> timers;
    std::shared_ptr<QTimer> timer = timers[interval].lock();
    if (!timer) {
        // The last holder may let go from within the timer's signal.
        timer = std::shared_ptr<QTimer>(new QTimer, [](QTimer *last) {
            last->stop();
            last->deleteLater();
        });
        timer->start(interval);
        timers.insert(interval, timer);
    }
    return timer;
}

} // namespace

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
    if (moves == bool(m_timer))
        return;
    m_elapsed = 0;
    if (moves) {
        m_timer = sharedTimer(m_interval);
        connect(m_timer.get(), &QTimer::timeout, this, &MovingItem::step);
    } else {
        disconnect(m_timer.get(), nullptr, this, nullptr);
        m_timer.reset();
    }
    update();
}

void MovingItem::step()
{
    m_elapsed += m_interval;
    if (stepShows())
        update();
}

} // namespace velto
