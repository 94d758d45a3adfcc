#pragma once

#include <QColor>
#include <QRect>
#include <QSGNode>
#include <QSizeF>

class QQuickWindow;
class QSGImageNode;
class QSGRectangleNode;

namespace velto {

/// What a RoundedBox looks like. Lengths in logical pixels.
struct BoxLook {
    QSizeF size;
    qreal radius = 0;
    QColor fill = Qt::transparent;
    qreal edge = 0;
    QColor edgeColor = Qt::transparent;

    bool operator==(const BoxLook &) const = default;
};

/// Draws a rounded box on whole device pixels, wherever its item is. Only its upper and lower end, where the corners are, are
/// painted into pictures; what is between them is plain rectangles.
/// A node of transforms, though it has none: to children that come later the software scene graph hands down only those.
/// Lives with the scene graph: made and set while that is synchronised with the items.
class BoxNode : public QSGTransformNode {
public:
    explicit BoxNode(QQuickWindow *window);

    /// With so many device pixels for a logical one.
    void set(const BoxLook &look, qreal scale);
    /// Before each frame: the item may have been scrolled, or moved with what it is in.
    void preprocess() override;

private:
    void layOut(QPointF origin);
    /// Each of them in device pixels of the window; where the area is empty there is no node.
    void draw(QSGImageNode *&node, const QRect &area, bool anew);
    void draw(QSGRectangleNode *&node, const QRect &area, const QColor &color);
    /// In logical pixels of the item.
    QRectF inItem(const QRect &area) const;
    int edge() const;

    QQuickWindow *m_window;
    BoxLook m_look;
    qreal m_scale = 1;
    bool m_changed = true;
    QPointF m_origin; ///< of the item, in logical pixels of the window
    QRect m_box; ///< in device pixels of the window
    QSGImageNode *m_upper = nullptr; ///< all of it if there is nothing between its ends
    QSGImageNode *m_lower = nullptr;
    QSGRectangleNode *m_middle = nullptr;
    QSGRectangleNode *m_left = nullptr;
    QSGRectangleNode *m_right = nullptr;
};

} // namespace velto
