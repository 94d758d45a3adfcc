#pragma once

#include <QColor>
#include <QQuickItem>
#include <QtQml/qqml.h>

namespace velto {

class Theme;

/// A rounded rectangle with an edge inside it, sharp at every scale of the display. The toolkit's own ends between two device
/// pixels at a scale such as 150 %: an edge is wider on one side than on the other, and corners have notches.
class RoundedBox : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// Logical pixels; half of the height or more makes a capsule.
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY changed FINAL)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed FINAL)
    /// The width of the edge in logical pixels, drawn as whole device pixels: as many as fit in, at least one; 0 for none.
    /// Where the desktop asks for high contrast the edge is nearly opaque.
    Q_PROPERTY(qreal edge MEMBER m_edge NOTIFY changed FINAL)
    Q_PROPERTY(QColor edgeColor MEMBER m_edgeColor NOTIFY changed FINAL)
public:
    explicit RoundedBox(QQuickItem *parent = nullptr);

    void componentComplete() override;

Q_SIGNALS:
    void changed();

protected:
    QSGNode *updatePaintNode(QSGNode *before, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    qreal m_radius = 0;
    QColor m_color = Qt::transparent;
    qreal m_edge = 0;
    QColor m_edgeColor = Qt::transparent;
    const Theme *m_theme = nullptr; ///< of the engine, which outlives its items
};

} // namespace velto
