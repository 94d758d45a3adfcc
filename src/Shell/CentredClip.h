#pragma once

#include <QQuickItem>

namespace velto {

/// Clips its children to a rectangle of this size, in the middle of its parent's width. The item itself stays at the left: when
/// the rectangle narrows no child moves, and so the scene graph doesn't visit every item of the panel at each step of its motion.
class CentredClip : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QSizeF room READ room WRITE setRoom NOTIFY roomChanged FINAL)
    QML_ELEMENT
public:
    explicit CentredClip(QQuickItem *parent = nullptr);

    QSizeF room() const { return m_room; }
    void setRoom(QSizeF room);
    QRectF clipRect() const override;
    bool contains(const QPointF &point) const override { return clipRect().contains(point); }

Q_SIGNALS:
    void roomChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    void resize();

    QSizeF m_room;
    bool m_odd = false;
};

} // namespace velto
