#pragma once

#include <QImage>

namespace velto {

/// The symbol "rectangle.topthird.inset.filled", `size` pixels wide and high, on whole pixels: light, on a dark ground of its
/// own, so that it shows on a light panel too.
QImage statusIcon(int size);

} // namespace velto
