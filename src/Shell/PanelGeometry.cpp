#include "Shell/PanelGeometry.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace velto {

namespace {

constexpr double kHousingWidthWithout = 120;
constexpr double kFactRoom = 43;
constexpr double kMoreRoomWithout = 30;
constexpr double kPeekSides = 220;
/// What the open panel needs with letters as drawn.
constexpr QSizeF kLeastDisplay{360, 300};
constexpr QSizeF kLeftFree{128, 64};
/// What the row of a Peek gains in height with letters twice as large: its margins stay.
constexpr double kRowGrowth = 20;
constexpr double kMostUnfolded = 300;
constexpr double kLeftUnderUnfolded = 160;

/// `usual`, `factor` times as large as far as the display has room; of an even width, so that its middle is the display's.
QSizeF grown(QSizeF usual, double factor, QSizeF display)
{
    const QSize wanted = (factor * usual).boundedTo(display - kLeftFree).toSize();
    const int half = wanted.width() / 2;
    return QSizeF(2 * half, wanted.height()).expandedTo(usual).boundedTo(display);
}

} // namespace

QSizeF panelSize(QSizeF housing, PanelSize size, QSizeF row, double unfolded)
{
    switch (size) {
    case PanelSize::Expanded:
        return kExpandedSize;
    case PanelSize::Peeking:
    case PanelSize::Unfolded:
        return {std::max(row.width(), housing.width() + kStripSides + kPeekSides),
                housing.height() + row.height() + (size == PanelSize::Unfolded ? unfolded : 0)};
    case PanelSize::Collapsed:
        break;
    }
    return {housing.width() + kStripSides, housing.height()};
}

QSizeF expandedSize(QSizeF display, double textScale)
{
    return grown(kExpandedSize, textScale, display);
}

QSizeF peekRowSize(QSizeF display, double textScale)
{
    return {grown(kPeekRowSize, textScale, display).width(), std::round(kPeekRowSize.height() + kRowGrowth * (textScale - 1))};
}

double fittingTextScale(QSizeF display, double wanted)
{
    const double fitting = std::min(display.width() / kLeastDisplay.width(), display.height() / kLeastDisplay.height());
    return std::clamp(fitting, 1.0, std::max(1.0, wanted));
}

double mostUnfolded(double displayHeight, double textScale)
{
    return std::max(0.0, std::min(kMostUnfolded * textScale, displayHeight - kLeftUnderUnfolded));
}

std::optional<Display> chooseDisplay(const QList<Display> &displays)
{
    const auto withHousing = std::ranges::find_if(displays, [](const Display &display) { return display.safeAreaTop > 0; });
    if (withHousing != displays.end())
        return *withHousing;
    const auto main = std::ranges::find_if(displays, &Display::main);
    if (main != displays.end())
        return *main;
    return displays.isEmpty() ? std::nullopt : std::optional(displays.first());
}

QSizeF measureHousing(const Display &display)
{
    if (display.auxiliaryTopLeft && display.auxiliaryTopRight) {
        const double width = display.frame.width() - display.auxiliaryTopLeft->width() - display.auxiliaryTopRight->width();
        return {std::max(1.0, width), std::max(1.0, display.safeAreaTop)};
    }
    return {kHousingWidthWithout, display.statusBarThickness};
}

double factRoom(QSizeF housing)
{
    return kFactRoom + (housing.width() == kHousingWidthWithout ? kMoreRoomWithout : 0);
}

QRect hangFrom(const Display &display, QSizeF size)
{
    const QSizeF room = display.frame.size().expandedTo({1, 1});
    const QSize fitted = size.boundedTo(room).toSize().expandedTo({1, 1});
    const double left = display.frame.center().x() - fitted.width() / 2.0;
    return {QPoint(qRound(left), qRound(display.frame.top())), fitted};
}

QPainterPath veltoOutline(const QRectF &rect, OutlineRadii radii)
{
    const double t = std::clamp(radii.top, 0.0, std::min(rect.width() / 2, rect.height() / 2));
    const double b = std::clamp(radii.bottom, 0.0, std::min(rect.width() / 2 - t, rect.height() - t));
    QPainterPath path(rect.topLeft());
    path.quadTo(rect.left() + t, rect.top(), rect.left() + t, rect.top() + t);
    path.lineTo(rect.left() + t, rect.bottom() - b);
    path.quadTo(rect.left() + t, rect.bottom(), rect.left() + t + b, rect.bottom());
    path.lineTo(rect.right() - t - b, rect.bottom());
    path.quadTo(rect.right() - t, rect.bottom(), rect.right() - t, rect.bottom() - b);
    path.lineTo(rect.right() - t, rect.top() + t);
    path.quadTo(rect.right() - t, rect.top(), rect.right(), rect.top());
    path.closeSubpath();
    return path;
}

} // namespace velto
