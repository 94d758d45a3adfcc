#pragma once

#include <QString>

namespace velto {

/// The path of one of the programs that an installation has beside Velto (velto-video, velto-folders); empty if it isn't there.
QString helperProgram(const QString &name);

} // namespace velto
