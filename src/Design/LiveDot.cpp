#include "Design/LiveDot.h"

#include "Design/Theme.h"

#include <QEasingCurve>
#include <QPainter>
#include <cmath>

namespace velto {

namespace {

constexpr int kQuarters = 4;
constexpr int kInterval = 44; // ms; 25 steps each way
constexpr int kHalf = 25 * kInterval; // ms
constexpr qreal kFaintest = 0.35;
constexpr qreal kSmallest = 0.75;
constexpr qreal kVisible = 0.03; ///< of the breath; less than half of its largest step

/// 1 at the start, 0 after half a period, 1 after a whole one; eased at both ends.
qreal breath(int elapsed)
{
    const int phase = elapsed % (2 * kHalf);
    const qreal way = qreal(phase < kHalf ? kHalf - phase : phase - kHalf) / kHalf;
    static const QEasingCurve ease = [] {
        QEasingCurve curve(QEasingCurve::BezierSpline);
        curve.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
        return curve;
    }();
    return ease.valueForProgress(way);
}

/// The side of the square around a dot.
qreal sideFor(qreal diameter)
{
    return kQuarters * std::ceil(diameter / kQuarters);
}

} // namespace

LiveDot::LiveDot(QQuickItem *parent)
    : MovingItem(kInterval, parent)
    , m_color(Theme::kIce)
{
    setImplicitSize(sideFor(m_diameter), sideFor(m_diameter));
}

void LiveDot::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void LiveDot::setDiameter(qreal diameter)
{
    if (m_diameter == diameter)
        return;
    m_diameter = diameter;
    setImplicitSize(sideFor(diameter), sideFor(diameter));
    update();
    Q_EMIT diameterChanged();
}

void LiveDot::setLive(bool live)
{
    if (m_live == live)
        return;
    m_live = live;
    follow();
    Q_EMIT liveChanged();
}

/// Where the breath turns, several steps together make less of a difference than one on the way.
bool LiveDot::stepShows()
{
    const qreal now = breath(elapsed());
    if (std::abs(now - m_shown) < kVisible)
        return false;
    m_shown = now;
    return true;
}

void LiveDot::paint(QPainter *painter)
{
    const qreal full = breath(elapsed());
    const qreal radius = m_diameter / 2 * (kSmallest + (1 - kSmallest) * full);
    painter->setOpacity(kFaintest + (1 - kFaintest) * full);
    painter->setPen(Qt::NoPen);
    painter->setBrush(m_color);
    painter->drawEllipse(QPointF(width() / 2, height() / 2), radius, radius);
}

} // namespace velto
