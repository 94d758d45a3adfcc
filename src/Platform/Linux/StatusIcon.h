#pragma once

#include <QIcon>

namespace velto {

/// The symbol "rectangle.topthird.inset.filled", drawn for each of the trays' sizes: light, on a dark ground of its own, so
/// that it shows on a light panel too.
QIcon statusIcon();

} // namespace velto
