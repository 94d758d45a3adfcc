#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace velto {

/// A soft light behind something: `color` in the middle, nothing at the edge.
class Glow : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorChanged FINAL)
public:
    explicit Glow(QQuickItem *parent = nullptr)
        : QQuickPaintedItem(parent)
    {
        connect(this, &Glow::colorChanged, this, [this] { update(); });
    }

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void colorChanged();

private:
    QColor m_color;
};

} // namespace velto
