#include "Shell/CornerCut.h"

#include "Shell/FrameNode.h"
#include "Shell/PanelGeometry.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace velto {

namespace {

/// How much of each pixel of `area` the outline covers, antialiased as the black itself is.
QImage coverage(const QPainterPath &outline, const QRect &area)
{
    QImage image(area.size(), QImage::Format_Alpha8);
    image.fill(0);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-area.topLeft());
    painter.fillPath(outline, Qt::black);
    return image;
}

/// Keeps of each pixel no more than its share; in a window without transparency, no more light than that. Doing it twice
/// changes nothing, since a frame may repaint only a part of what is below.
void limit(QImage &picture, const QRect &area, const QImage &shares)
{
    const bool transparent = picture.hasAlphaChannel();
    const QRect within = area.intersected(picture.rect());
    for (int y = within.top(); y <= within.bottom(); ++y) {
        // Not scanLine(), which would copy the picture while it is being painted.
        auto *line = reinterpret_cast<QRgb *>(const_cast<uchar *>(picture.constScanLine(y)));
        const uchar *share = shares.constScanLine(y - area.top()) - area.left();
        for (int x = within.left(); x <= within.right(); ++x) {
            const uint most = share[x];
            if (!transparent) {
                const int light = int(most);
                line[x] = qRgb(std::min(qRed(line[x]), light), std::min(qGreen(line[x]), light), std::min(qBlue(line[x]), light));
                continue;
            }
            const uint alpha = uint(qAlpha(line[x]));
            if (alpha <= most)
                continue;
            const auto part = [&](int channel) { return int((uint(channel) * most + alpha / 2) / alpha); };
            line[x] = qRgba(part(qRed(line[x])), part(qGreen(line[x])), part(qBlue(line[x])), int(most));
        }
    }
}

/// The last node of its window that paints here. It works on the pixels of the frame, which exist only in the software scene
/// graph.
class CutNode final : public FrameNode {
public:
    using FrameNode::FrameNode;

    void set(QSizeF size, OutlineRadii radii)
    {
        m_size = size;
        m_radii = radii;
        markDirty(DirtyMaterial);
    }

    QRectF rect() const override
    {
        const double height = std::min(m_radii.bottom, m_size.height());
        return {0, m_size.height() - height, m_size.width(), height};
    }
    void render(const RenderState *) override
    {
        QPainter *const painter = this->painter();
        if (!painter || painter->device()->devType() != QInternal::Image)
            return;
        auto &picture = *static_cast<QImage *>(painter->device());
        if (picture.format() != QImage::Format_ARGB32_Premultiplied && picture.format() != QImage::Format_RGB32)
            return;
        const double scale = picture.devicePixelRatio();
        const QTransform toPixels = matrix()->toTransform() * QTransform::fromScale(scale, scale);
        const QPainterPath outline = toPixels.map(veltoOutline(QRectF({}, m_size), m_radii));
        const QRectF band = rect();
        const double reach = std::min(m_radii.top + m_radii.bottom + 1, band.width() / 2);
        for (const double left : {band.left(), band.right() - reach}) {
            const QRect corner =
                toPixels.mapRect(QRectF(left, band.top(), reach, band.height())).toAlignedRect().intersected(picture.rect());
            if (!corner.isEmpty())
                limit(picture, corner, coverage(outline, corner));
        }
    }

private:
    QSizeF m_size;
    OutlineRadii m_radii;
};

} // namespace

CornerCut::CornerCut(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &CornerCut::changed, this, &QQuickItem::update);
}

QSGNode *CornerCut::updatePaintNode(QSGNode *before, UpdatePaintNodeData *)
{
    auto *node = static_cast<CutNode *>(before);
    if (!node)
        node = new CutNode(window());
    node->set(size(), {m_top, m_bottom});
    return node;
}

void CornerCut::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    update();
}

} // namespace velto
