#pragma once

#include <QQuickItem>

namespace velto {

/// Shows of its children what stands within its own size, in the middle of its parent's width. It stands at the left all the
/// same: narrowing it moves no child, and so the scene graph doesn't visit every item of the panel at each step of its motion.
class CentredClip : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
public:
    explicit CentredClip(QQuickItem *parent = nullptr);

    QRectF clipRect() const override;
    bool contains(const QPointF &point) const override { return clipRect().contains(point); }

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    void parentResized();
};

} // namespace velto
