#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace velto {

/// Hears of each folder before it is looked at, and says whether to; called on the thread of the walk.
using EnterFolder = std::function<bool(const QString &)>;

/// The repositories at these folders and up to three levels below them, in ascending order of their paths. Each stands there
/// once, under its own path rather than that of a link to it. Blocks for the disk.
QStringList findRepos(const QStringList &roots, const EnterFolder &enter = {});

} // namespace velto
