#include "Platform/Linux/StatusIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace velto {

namespace {

constexpr QColor kLight(0xf4, 0xf4, 0xf4);
constexpr QColor kGround(0, 0, 0, 190);

/// Whole pixels, so that every edge is sharp.
int part(int size, double share)
{
    return std::max(1, int(std::lround(size * share)));
}

} // namespace

QImage statusIcon(int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);

    const int line = part(size, 1 / 16.0);
    const int top = part(size, 2 / 16.0);
    const int radius = part(size, 3 / 16.0);
    const QRect ground(0, top - line, size, size - 2 * (top - line));
    const QRect outer = ground.adjusted(line, line, -line, -line);
    const QRect inner = outer.adjusted(line, line, -line, -line);
    painter.setBrush(kGround);
    painter.drawRoundedRect(ground, radius + line, radius + line);

    QPainterPath outline;
    outline.addRoundedRect(outer, radius, radius);
    outline.addRoundedRect(inner, std::max(1, radius - line), std::max(1, radius - line));
    painter.setBrush(kLight);
    painter.drawPath(outline); // odd-even fill: only the ring between the two

    const QRect room = inner.adjusted(line, line, -line, -line);
    painter.drawRoundedRect(QRect(room.topLeft(), QSize(room.width(), part(inner.height(), 1 / 3.0))), line, line);
    return image;
}

} // namespace velto
