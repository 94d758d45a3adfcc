#include "Design/LiveDot.h"

#include "Design/Theme.h"

#include <QEasingCurve>
#include <QPainter>

namespace velto {

namespace {

constexpr int kSize = 6;
constexpr int kInterval = 44; // ms; 25 steps each way
constexpr int kHalf = 25 * kInterval; // ms
constexpr qreal kFaintest = 0.35;
constexpr qreal kSmallest = 0.75;

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

} // namespace

LiveDot::LiveDot(QQuickItem *parent)
    : MovingItem(kInterval, parent)
    , m_color(Theme::kIce)
{
    setImplicitSize(kSize, kSize);
}

void LiveDot::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void LiveDot::setLive(bool live)
{
    if (m_live == live)
        return;
    m_live = live;
    follow();
    Q_EMIT liveChanged();
}

void LiveDot::paint(QPainter *painter)
{
    const qreal full = breath(elapsed());
    const qreal radius = qMin(width(), height()) / 2 * (kSmallest + (1 - kSmallest) * full);
    painter->setOpacity(kFaintest + (1 - kFaintest) * full);
    painter->setPen(Qt::NoPen);
    painter->setBrush(m_color);
    painter->drawEllipse(QPointF(width() / 2, height() / 2), radius, radius);
}

} // namespace velto
