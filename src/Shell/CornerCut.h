#pragma once

#include <QQuickItem>

namespace velto {

/// Removes whatever lies outside the rounded lower corners of the black, which is as large as this item. The scene graph
/// clips to rectangles only; while the black moves, the contents of the panel reach into its corners. Put it over them.
class CornerCut : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// Corner radii of the black, in logical pixels.
    Q_PROPERTY(double topRadius MEMBER m_top NOTIFY changed FINAL)
    Q_PROPERTY(double bottomRadius MEMBER m_bottom NOTIFY changed FINAL)
public:
    explicit CornerCut(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    QSGNode *updatePaintNode(QSGNode *before, UpdatePaintNodeData *) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;

private:
    double m_top = 6;
    double m_bottom = 10;
};

} // namespace velto
