#include "Design/SwitchMark.h"

#include <QPainter>

namespace velto {

namespace {

constexpr qreal kEdge = 2;

} // namespace

SwitchMark::SwitchMark(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &SwitchMark::changed, this, [this] { update(); });
}

void SwitchMark::paint(QPainter *painter)
{
    painter->setPen(Qt::NoPen);
    painter->setBrush(m_track);
    painter->drawRoundedRect(boundingRect(), height() / 2, height() / 2);
    const qreal thumb = height() - 2 * kEdge;
    const qreal way = width() - 2 * kEdge - thumb - m_stretch;
    painter->setBrush(Qt::white);
    painter->drawRoundedRect(QRectF(kEdge + way * m_place, kEdge, thumb + m_stretch, thumb), thumb / 2, thumb / 2);
}

} // namespace velto
