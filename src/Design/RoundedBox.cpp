#include "Design/RoundedBox.h"

#include "Design/Theme.h"

#include <QPainter>
#include <QQmlEngine>
#include <algorithm>
#include <cmath>

namespace velto {

RoundedBox::RoundedBox(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &RoundedBox::changed, this, [this] { update(); });
}

void RoundedBox::componentComplete()
{
    QQuickPaintedItem::componentComplete();
    m_theme = Theme::of(qmlEngine(this));
    if (m_theme)
        connect(m_theme, &Theme::contrastChanged, this, [this] { update(); });
}

void RoundedBox::paint(QPainter *painter)
{
    // In device pixels, so that the straight parts of the edge are sharp; and within the picture, which the toolkit makes for
    // a size in whole logical pixels.
    const QTransform toPixels = painter->transform();
    const QRect picture(0, 0, painter->device()->width(), painter->device()->height());
    const QRectF area(toPixels.mapRect(boundingRect()).toRect().intersected(picture));
    const qreal scale = toPixels.m11();
    painter->resetTransform();
    const qreal edge = m_edge > 0 ? std::max(1.0, std::round(m_edge * scale)) : 0;
    const qreal most = std::min(area.width(), area.height()) / 2;
    const qreal radius = std::min(m_radius * scale, most);
    painter->setPen(Qt::NoPen);
    painter->setBrush(m_color);
    painter->drawRoundedRect(area, radius, radius);
    if (edge == 0)
        return;
    painter->setBrush(Qt::NoBrush);
    QColor colour = m_edgeColor;
    if (m_theme && colour.alpha() > 0)
        colour.setAlphaF(std::max(colour.alphaF(), float(m_theme->edgeFloor())));
    painter->setPen(QPen(colour, edge));
    const qreal middle = std::max(0.0, radius - edge / 2);
    painter->drawRoundedRect(area.adjusted(edge / 2, edge / 2, -edge / 2, -edge / 2), middle, middle);
}

} // namespace velto
