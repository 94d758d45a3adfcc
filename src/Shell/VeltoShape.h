#pragma once

#include <QQuickItem>

namespace velto {

/// The black outline, and with `openness` from 0 to 1 the open panel's gradient inside it. It is painted into the frame itself:
/// it is as large as the window, and moves.
class VeltoShape : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double topRadius READ topRadius WRITE setTopRadius NOTIFY topRadiusChanged FINAL)
    Q_PROPERTY(double bottomRadius READ bottomRadius WRITE setBottomRadius NOTIFY bottomRadiusChanged FINAL)
    Q_PROPERTY(double openness READ openness WRITE setOpenness NOTIFY opennessChanged FINAL)
    /// The width of a white line inside the outline, in logical pixels; 0 for none.
    Q_PROPERTY(double edge READ edge WRITE setEdge NOTIFY edgeChanged FINAL)
public:
    explicit VeltoShape(QQuickItem *parent = nullptr);

    double topRadius() const { return m_top; }
    void setTopRadius(double radius) { set(m_top, radius, &VeltoShape::topRadiusChanged); }
    double bottomRadius() const { return m_bottom; }
    void setBottomRadius(double radius) { set(m_bottom, radius, &VeltoShape::bottomRadiusChanged); }
    double openness() const { return m_openness; }
    void setOpenness(double openness) { set(m_openness, openness, &VeltoShape::opennessChanged); }

    double edge() const { return m_edge; }
    void setEdge(double edge) { set(m_edge, edge, &VeltoShape::edgeChanged); }

Q_SIGNALS:
    // One each: a step of the motion changes all of them.
    void topRadiusChanged();
    void bottomRadiusChanged();
    void opennessChanged();
    void edgeChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *before, UpdatePaintNodeData *) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;

private:
    void set(double &field, double value, void (VeltoShape::*changed)())
    {
        if (field == value)
            return;
        field = value;
        update();
        Q_EMIT(this->*changed)();
    }

    double m_top = 6;
    double m_bottom = 10;
    double m_openness = 0;
    double m_edge = 0;
};

} // namespace velto
