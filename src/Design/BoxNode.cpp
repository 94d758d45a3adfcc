#include "Design/BoxNode.h"

#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRectangleNode>
#include <QSGTexture>
#include <algorithm>
#include <cmath>

namespace velto {

namespace {

/// The scene graph keeps places as floats; a half is rounded up all the same.
constexpr qreal kFuzz = 1e-3;

int nearest(qreal place)
{
    return int(std::floor(place + 0.5 + kFuzz));
}

/// Where a node is in its window; nowhere in particular if it is turned or enlarged.
QPointF originOf(const QSGNode &node)
{
    QPointF origin;
    for (const QSGNode *at = node.parent(); at; at = at->parent()) {
        if (at->type() != QSGNode::TransformNodeType)
            continue;
        const QTransform step = static_cast<const QSGTransformNode *>(at)->matrix().toTransform();
        if (step.type() > QTransform::TxTranslate)
            return {};
        origin += QPointF(step.dx(), step.dy());
    }
    return origin;
}

} // namespace

BoxNode::BoxNode(QQuickWindow *window)
    : m_window(window)
{
    setFlag(UsePreprocess);
}

void BoxNode::set(const BoxLook &look, qreal scale)
{
    m_changed = m_changed || look != m_look || scale != m_scale;
    m_look = look;
    m_scale = scale;
    preprocess();
}

void BoxNode::preprocess()
{
    const QPointF origin = originOf(*this);
    if (m_changed || origin != m_origin)
        layOut(origin);
}

void BoxNode::layOut(QPointF origin)
{
    const QPointF begin = origin * m_scale;
    const QPoint corner(nearest(begin.x()), nearest(begin.y()));
    // Right edges line up wherever the left ones are; the height stays the same while it is scrolled.
    const int width = nearest(begin.x() + m_look.size.width() * m_scale) - corner.x();
    const QRect box(corner, QSize(width, nearest(m_look.size.height() * m_scale)));
    const bool anew = m_changed || box.size() != m_box.size();
    m_changed = false;
    m_origin = origin;
    m_box = box;

    const int curve = int(std::ceil(std::max(m_look.radius * m_scale, qreal(edge()))));
    const bool whole = 2 * curve >= box.height();
    const QRect middle = whole ? QRect() : box.adjusted(0, curve, 0, -curve);
    draw(m_upper, whole ? box : QRect(box.topLeft(), QSize(box.width(), curve)), anew);
    draw(m_lower, whole ? QRect() : QRect(box.left(), box.bottom() + 1 - curve, box.width(), curve), anew);
    draw(m_middle, middle, m_look.fill);
    draw(m_left, QRect(middle.topLeft(), QSize(edge(), middle.height())), m_look.edgeColor);
    draw(m_right, QRect(middle.right() + 1 - edge(), middle.top(), edge(), middle.height()), m_look.edgeColor);
}

void BoxNode::draw(QSGImageNode *&node, const QRect &area, bool anew)
{
    if (area.isEmpty()) {
        delete node;
        node = nullptr;
        return;
    }
    const bool missing = !node;
    if (missing) {
        node = m_window->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Nearest);
    }
    if (missing || anew) {
        QImage picture(area.size(), QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(m_box.topLeft() - area.topLeft());
        const QRectF box({}, QSizeF(m_box.size()));
        const qreal radius = std::min({m_look.radius * m_scale, box.width() / 2, box.height() / 2});
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_look.fill);
        painter.drawRoundedRect(box, radius, radius);
        if (const qreal half = edge() / 2.0; half > 0) {
            painter.setPen(QPen(m_look.edgeColor, 2 * half));
            painter.setBrush(Qt::NoBrush);
            const qreal middle = std::max(0.0, radius - half);
            painter.drawRoundedRect(box.adjusted(half, half, -half, -half), middle, middle);
        }
        painter.end();
        node->setTexture(m_window->createTextureFromImage(picture, QQuickWindow::TextureHasAlphaChannel));
        node->setSourceRect({{}, QSizeF(area.size())});
    }
    node->setRect(inItem(area));
    if (missing)
        appendChildNode(node);
}

void BoxNode::draw(QSGRectangleNode *&node, const QRect &area, const QColor &color)
{
    if (area.isEmpty() || color.alpha() == 0) {
        delete node;
        node = nullptr;
        return;
    }
    const bool missing = !node;
    if (missing)
        node = m_window->createRectangleNode();
    node->setRect(inItem(area));
    node->setColor(color);
    if (missing)
        appendChildNode(node);
}

QRectF BoxNode::inItem(const QRect &area) const
{
    return {QPointF(area.topLeft()) / m_scale - m_origin, QSizeF(area.size()) / m_scale};
}

int BoxNode::edge() const
{
    return m_look.edge > 0 ? std::max(1, int(m_look.edge * m_scale + kFuzz)) : 0;
}

} // namespace velto
