#pragma once

#include "Platform/Displays.h"

#include <QList>
#include <QRect>
#include <QSizeF>
#include <chrono>
#include <optional>

class QPainterPath;

namespace velto {

/// The sizes of the window. A question that is unfolded makes the row of a Peek higher by as much as it needs.
enum class PanelSize : quint8 { Collapsed, Peeking, Unfolded, Expanded };

/// Corner radii of the outline, in points.
struct OutlineRadii {
    double top = 6;
    double bottom = 10;

    bool operator==(const OutlineRadii &) const = default;
};

/// How long the shared spring takes to come to rest.
inline constexpr std::chrono::milliseconds kSpringTime{550};

inline constexpr QSizeF kExpandedSize{780, 520};
inline constexpr QSizeF kPeekRowSize{520, 36};
/// Room beside the housing for what the strip has to say, both sides together.
inline constexpr double kStripSides = 104;

/// The display that the strip is on: the first with a camera housing, else the main one. Nothing without displays.
std::optional<Display> chooseDisplay(const QList<Display> &displays);

/// The size of a display's camera housing; without one, of its substitute.
QSizeF measureHousing(const Display &display);

/// How wide what the strip says on one side of a housing of that size may be: beside a camera it has to stay on its side, while
/// the middle of a substitute is free.
double factRoom(QSizeF housing);

/// How large each state is around a housing of that size, with a row of that size; `unfolded` is the height of what is under
/// the row.
QSizeF panelSize(QSizeF housing, PanelSize size, QSizeF row = kPeekRowSize, double unfolded = 0);

/// The row of a Peek on a display of that size, with letters `textScale` times as large as drawn: as wide for them as the display
/// allows, and high enough.
QSizeF peekRowSize(QSizeF display, double textScale);

/// How large the open panel is on a display of that size, with letters `textScale` times as large as drawn: it grows with them,
/// and leaves some of the display free, so that the pointer has somewhere to go.
QSizeF expandedSize(QSizeF display, double textScale);

/// How much larger than drawn the letters are where the desktop asks for `wanted`, 1 or more: on a small display no larger than
/// leaves the panel's controls their places.
double fittingTextScale(QSizeF display, double wanted);

/// How much of what unfolds under the row is seen at a time on a display of that height.
double mostUnfolded(double displayHeight, double textScale);

/// Where something of this size hangs from the display's top edge, in its middle. Never empty, and never larger than the display.
QRect hangFrom(const Display &display, QSizeF size);

/// The outline of the black: its top corners flare outwards into the display's edge, as a camera housing does.
QPainterPath veltoOutline(const QRectF &rect, OutlineRadii radii);

} // namespace velto
