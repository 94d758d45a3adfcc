#include "Shell/Glow.h"

#include <QPainter>
#include <QRadialGradient>

namespace velto {

void Glow::paint(QPainter *painter)
{
    const QRectF area = boundingRect();
    // A circular gradient, stretched over the item.
    painter->scale(area.width(), area.height());
    QColor faded = m_color;
    QRadialGradient gradient(0.5, 0.5, 0.5);
    gradient.setColorAt(0, m_color);
    faded.setAlphaF(m_color.alphaF() * 0.45F);
    gradient.setColorAt(0.5, faded);
    faded.setAlphaF(0);
    gradient.setColorAt(1, faded);
    painter->fillRect(QRectF(0, 0, 1, 1), gradient);
}

} // namespace velto
