#pragma once

#include <QQuickItem>

namespace velto {

/// Clips its children to a rectangle of this size, in the middle of its parent's width. The item itself stays at the left: when
/// the rectangle narrows no child moves, and so the scene graph doesn't visit every item of the panel at each step of its motion.
class CentredClip : public QQuickItem {
    Q_OBJECT
    /// In logical pixels.
    Q_PROPERTY(double roomWidth READ roomWidth WRITE setRoomWidth NOTIFY roomWidthChanged FINAL)
    Q_PROPERTY(double roomHeight READ roomHeight WRITE setRoomHeight NOTIFY roomHeightChanged FINAL)
    QML_ELEMENT
public:
    explicit CentredClip(QQuickItem *parent = nullptr);

    double roomWidth() const { return m_room.width(); }
    void setRoomWidth(double width);
    double roomHeight() const { return m_room.height(); }
    void setRoomHeight(double height);
    QRectF clipRect() const override;
    bool contains(const QPointF &point) const override { return clipRect().contains(point); }

Q_SIGNALS:
    void roomWidthChanged();
    void roomHeightChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    void resize();

    QSizeF m_room{0, 0};
    bool m_odd = false;
};

} // namespace velto
