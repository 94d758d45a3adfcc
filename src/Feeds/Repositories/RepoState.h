#pragma once

#include "Feeds/Repositories/RepoSearch.h"

#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringList>

namespace velto {

class ToolRunner;

/// What isn't committed or pushed in one git repository.
struct RepoState {
    QString name; ///< the last component of the path
    QString path;
    QString branch = QStringLiteral("?"); ///< "(detached)" without one, "?" if git doesn't tell
    qint64 dirty = 0; ///< entries that are changed, added, deleted or untracked
    qint64 ahead = 0; ///< commits to push
    qint64 behind = 0; ///< commits to pull

    bool needsWork() const { return dirty > 0 || ahead > 0; }
    /// "3 changed · 2 to push"; empty if there is neither.
    QString summary() const;
    bool operator==(const RepoState &) const = default;
};

/// What `git status --porcelain=v2 --branch` printed in the repository at `path` (https://git-scm.com/docs/git-status). Any
/// thread.
RepoState parseStatus(const QString &path, QByteArrayView output);

/// The states of the first 200 of these repositories, read one after another; one that can't be read, or not safely (see
/// GuardedGit), is left out. Blocks for up to 12 seconds for each git that is run, three a repository and more for submodules;
/// never on the UI thread.
QList<RepoState> repoStates(ToolRunner &tools, const QStringList &roots, const EnterFolder &enter = {});

} // namespace velto
