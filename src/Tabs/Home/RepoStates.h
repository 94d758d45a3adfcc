#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace velto {

class ToolRunner;

/// What isn't saved in one git repository.
struct RepoState {
    QString name; ///< of its folder
    QString path;
    QString branch = QStringLiteral("?");
    int dirty = 0; ///< entries changed, added, deleted or untracked
    int ahead = 0; ///< commits to push
    int behind = 0; ///< commits to pull

    /// "3 changed · 2 to push"; empty if there is neither.
    QString summary() const;
    bool operator==(const RepoState &) const = default;
};

/// The repositories at these folders or up to three levels below, sorted by path, at most 200. Blocks for the disk; any thread.
QStringList findRepos(const QStringList &roots);
/// What `git status --porcelain=v2 --branch` printed for this path (https://git-scm.com/docs/git-status). Any thread.
RepoState parseStatus(const QByteArray &output, const QString &path);
/// Finds the repositories and asks git about one after another; those that git can't read are left out. Blocks for long; never
/// on the UI thread.
QList<RepoState> repoStates(ToolRunner &tools, const QStringList &roots);

} // namespace velto
