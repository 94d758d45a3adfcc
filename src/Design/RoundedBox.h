#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqml.h>

namespace velto {

class Theme;

/// A rounded rectangle with an edge inside it. Painted here: the scene graph's own border breaks where arc meets line at a
/// scale such as 150 %.
class RoundedBox : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Logical pixels; half of the height or more makes a capsule.
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY changed FINAL)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed FINAL)
    /// The width of the edge in logical pixels, drawn as the nearest whole number of device pixels, at least one; 0 for none.
    /// Where the desktop asks for high contrast the edge is nearly opaque.
    Q_PROPERTY(qreal edge MEMBER m_edge NOTIFY changed FINAL)
    Q_PROPERTY(QColor edgeColor MEMBER m_edgeColor NOTIFY changed FINAL)
public:
    explicit RoundedBox(QQuickItem *parent = nullptr);

    void paint(QPainter *painter) override;
    void componentComplete() override;

Q_SIGNALS:
    void changed();

private:
    qreal m_radius = 0;
    QColor m_color = Qt::transparent;
    qreal m_edge = 0;
    QColor m_edgeColor = Qt::transparent;
    const Theme *m_theme = nullptr; ///< of the engine, which outlives its items
};

} // namespace velto
