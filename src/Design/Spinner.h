#pragma once

#include "Design/MovingItem.h"

#include <QColor>

namespace velto {

/// A small wheel of spokes for a wait of unknown length.
class Spinner : public velto::MovingItem { // qualified for the type registrar of Qt 6.4
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
public:
    explicit Spinner(QQuickItem *parent = nullptr);

    QColor color() const { return m_color; }
    void setColor(const QColor &color);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void colorChanged();

protected:
    bool wantsToMove() const override { return true; }

private:
    QColor m_color;
};

} // namespace velto
