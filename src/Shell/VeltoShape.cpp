#include "Shell/VeltoShape.h"

#include "Design/Theme.h"
#include "Shell/FrameNode.h"
#include "Shell/PanelGeometry.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace velto {

namespace {

constexpr int kSteps = 24; // of the gradient, linear between them

/// Opaque, so that painting the outline once is enough.
QColor blackened(const QColor &color, double openness)
{
    return QColor::fromRgbF(color.redF() * float(openness), color.greenF() * float(openness), color.blueF() * float(openness));
}

class ShapeNode final : public FrameNode {
public:
    using FrameNode::FrameNode;

    void set(QSizeF size, OutlineRadii radii, double openness, double edge)
    {
        m_size = size;
        m_radii = radii;
        m_openness = openness;
        m_edge = edge;
        markDirty(DirtyMaterial);
    }

    QRectF rect() const override { return {{}, m_size}; }

    void render(const RenderState *state) override
    {
        QPainter *const painter = this->painter();
        if (!painter || m_size.isEmpty())
            return;
        painter->setClipRegion(*state->clipRegion());
        painter->setTransform(matrix()->toTransform(), true);
        painter->setRenderHint(QPainter::Antialiasing);
        const QPainterPath outline = veltoOutline(rect(), m_radii);
        painter->fillPath(outline, brush());
        if (m_edge <= 0)
            return;
        painter->setClipPath(outline, Qt::IntersectClip);
        painter->strokePath(outline, QPen(Qt::white, 2 * m_edge));
    }

private:
    QBrush brush() const
    {
        if (m_openness <= 0)
            return Qt::black;
        QLinearGradient gradient(rect().topLeft(), rect().bottomLeft());
        for (int step = 0; step <= kSteps; ++step) {
            const double place = double(step) / kSteps;
            gradient.setColorAt(place, blackened(Theme::panelColor(place), m_openness));
        }
        return gradient;
    }

    QSizeF m_size;
    OutlineRadii m_radii;
    double m_openness = 0;
    double m_edge = 0;
};

} // namespace

VeltoShape::VeltoShape(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

QSGNode *VeltoShape::updatePaintNode(QSGNode *before, UpdatePaintNodeData *)
{
    auto *node = static_cast<ShapeNode *>(before);
    if (!node)
        node = new ShapeNode(window());
    node->set(size(), {m_top, m_bottom}, m_openness, m_edge);
    return node;
}

void VeltoShape::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    update();
}

} // namespace velto
