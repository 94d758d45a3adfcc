#include "Design/Spinner.h"

#include "Design/Theme.h"

#include <QPainter>

namespace velto {

namespace {

constexpr int kSize = 14;
constexpr int kSpokes = 8;
constexpr int kInterval = 100; // ms for each spoke
constexpr qreal kFaintest = 0.2;

} // namespace

Spinner::Spinner(QQuickItem *parent)
    : MovingItem(kInterval, parent)
    , m_color(Theme::kGlassSecondary)
{
    setImplicitSize(kSize, kSize);
}

void Spinner::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void Spinner::paint(QPainter *painter)
{
    const qreal size = qMin(width(), height());
    const int head = elapsed() / kInterval % kSpokes;
    painter->translate(width() / 2, height() / 2);
    for (int spoke = 0; spoke < kSpokes; ++spoke) {
        const int behind = (head - spoke + kSpokes) % kSpokes;
        painter->setOpacity(kFaintest + (1 - kFaintest) * (kSpokes - 1 - behind) / (kSpokes - 1));
        painter->setPen(QPen(m_color, size * 0.11, Qt::SolidLine, Qt::RoundCap));
        painter->drawLine(QPointF(0, -size * 0.24), QPointF(0, -size * 0.42));
        painter->rotate(360.0 / kSpokes);
    }
}

} // namespace velto
