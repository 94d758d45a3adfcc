#pragma once

#include "Design/MovingItem.h"

#include <QColor>

namespace velto {

/// A small dot that breathes while something is at work: between an opacity of 0.35 and 1 and a scale of 0.75 and 1, 1.1 s
/// each way. Otherwise it is still, at full size and opacity.
class LiveDot : public velto::MovingItem { // qualified for the type registrar of Qt 6.4
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
    /// Logical pixels. The item is a little larger: its sides are whole device pixels at scales in quarters, so that the dot is
    /// round.
    Q_PROPERTY(qreal diameter READ diameter WRITE setDiameter NOTIFY diameterChanged FINAL)
    Q_PROPERTY(bool live READ live WRITE setLive NOTIFY liveChanged FINAL)
public:
    explicit LiveDot(QQuickItem *parent = nullptr);

    QColor color() const { return m_color; }
    void setColor(const QColor &color);
    qreal diameter() const { return m_diameter; }
    void setDiameter(qreal diameter);
    bool live() const { return m_live; }
    void setLive(bool live);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void colorChanged();
    void diameterChanged();
    void liveChanged();

protected:
    bool wantsToMove() const override { return m_live; }
    bool stepShows() override;

private:
    QColor m_color;
    qreal m_diameter = 6;
    bool m_live = true;
    qreal m_shown = 1; ///< how much of the breath the last step drawn had
};

} // namespace velto
