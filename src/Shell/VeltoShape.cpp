#include "Shell/VeltoShape.h"

#include "Shell/PanelGeometry.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace velto {

namespace {

QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(float(alpha));
    return color;
}

} // namespace

VeltoShape::VeltoShape(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void VeltoShape::paint(QPainter *painter)
{
    const QRectF area = boundingRect();
    if (area.isEmpty())
        return;
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    const QPainterPath outline = veltoOutline(area, {m_top, m_bottom});
    painter->fillPath(outline, Qt::black);
    if (m_openness <= 0)
        return;
    QLinearGradient gradient(area.topLeft(), area.bottomLeft());
    gradient.setColorAt(0, withAlpha(Qt::black, m_openness));
    gradient.setColorAt(0.5, withAlpha(m_glow, 0.3 * m_openness));
    gradient.setColorAt(1, withAlpha(Qt::black, 0.58 * m_openness));
    painter->fillPath(outline, gradient);
}

} // namespace velto
