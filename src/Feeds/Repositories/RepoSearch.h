#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace velto {

/// Called for each folder before it is searched, on the thread of the walk; returns whether to search it.
using EnterFolder = std::function<bool(const QString &)>;

/// The repositories in these folders and up to three levels below them, in ascending order of their paths. Each is listed
/// once, under its own path rather than that of a link to it. Blocks for the disk.
QStringList findRepos(const QStringList &roots, const EnterFolder &enter = {});

} // namespace velto
