#pragma once

#include <QString>

namespace velto {

/// The identifier of the application whose windows carry this WM_CLASS; the class itself for one that isn't known.
/// Empty without both.
QString identifierForClass(const QString &instance, const QString &windowClass);
/// The identifier of a screen recorder, by the name of its process (as in /proc/PID/comm: 15 bytes at most); else empty.
QString recorderForProcess(QStringView name);

} // namespace velto
