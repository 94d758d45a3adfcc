#pragma once

#include <QString>
#include <QStringList>

namespace velto {

/// Where tools are looked for, in order: the usual folders first, then those of `path` (the PATH that Velto was started with),
/// each once.
QStringList toolSearchPath(const QString &home, const QString &path);

} // namespace velto
