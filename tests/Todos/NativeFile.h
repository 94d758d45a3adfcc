#pragma once

#include <QString>

namespace velto {

inline const QString kSaveUntilKilled = QStringLiteral("--save-until-killed");
/// Saves one list after the other in this folder, as fast as it can.
[[noreturn]] void saveUntilKilled(const QString &folder);

} // namespace velto
