#include "Shell/VeltoShape.h"

#include "Design/Theme.h"
#include "Shell/PanelGeometry.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QScopeGuard>

namespace velto {

namespace {

constexpr int kSteps = 24; // of the gradient; straight from one to the next

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
    const auto drawEdge = qScopeGuard([&] {
        if (m_edge <= 0)
            return;
        painter->setClipPath(outline);
        painter->strokePath(outline, QPen(Qt::white, 2 * m_edge));
    });
    if (m_openness <= 0)
        return;
    QLinearGradient gradient(area.topLeft(), area.bottomLeft());
    for (int step = 0; step <= kSteps; ++step)
        gradient.setColorAt(double(step) / kSteps, withAlpha(Theme::panelColor(double(step) / kSteps), m_openness));
    painter->fillPath(outline, gradient);
}

} // namespace velto
