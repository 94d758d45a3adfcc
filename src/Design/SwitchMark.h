#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqml.h>

namespace velto {

/// The track of a switch and its thumb, as large as the item. Painted here: at a scale such as 150 % two of the scene graph's
/// rounded rectangles, one inside the other, come out uneven.
class SwitchMark : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Where the thumb is: 0 at the left, off; 1 at the right, on.
    Q_PROPERTY(qreal place MEMBER m_place NOTIFY changed FINAL)
    /// How much wider the thumb is while it is held, in logical pixels.
    Q_PROPERTY(qreal stretch MEMBER m_stretch NOTIFY changed FINAL)
    Q_PROPERTY(QColor track MEMBER m_track NOTIFY changed FINAL)
public:
    explicit SwitchMark(QQuickItem *parent = nullptr);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void changed();

private:
    qreal m_place = 0;
    qreal m_stretch = 0;
    QColor m_track;
};

} // namespace velto
