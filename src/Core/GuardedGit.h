#pragma once

#include "Platform/ToolRunner.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QStringList>
#include <map>
#include <optional>

namespace velto {

/// The environment in which no git, and no tool that calls git, asks for anything, fetches anything, writes to an index or runs
/// a hook: for folders that may come from someone else. The variables are those of https://git-scm.com/docs/git. Any thread.
ToolEnvironment guardedGit();

/// Asks git for the state of one folder that someone else may have filled: an unpacked archive can name programs in its own
/// configuration, in that of its submodules and in what they include. None of those is started; the programs that the user's own
/// configuration names, such as git-lfs, work as always. Blocks; use it for one reading.
class GuardedGit {
public:
    explicit GuardedGit(ToolRunner &tools);

    /// What `git status --porcelain=v2 --branch` prints for the work tree at `path`. Nothing if it isn't one, or can't be read,
    /// or can't be made safe. Blocks for up to 12 seconds for each git that it takes: three, and two to three a submodule.
    std::optional<QByteArray> status(const QString &path);

private:
    /// A repository's settings that matter here.
    struct Settings {
        std::map<QByteArray, QByteArray> overrides; ///< what takes the place of the programs that it names
        bool namesWorkTree = false;
    };
    static std::optional<Settings> parse(QByteArrayView listing);

    /// Looks at the repository at `folder` and at the submodules in its work tree; false if it isn't safe to go on.
    bool vet(const QString &folder, bool submodule);
    std::optional<QByteArray> ask(const QString &folder, const QStringList &words) const;

    ToolRunner &m_tools;
    std::map<QByteArray, QByteArray> m_overrides;
    ToolEnvironment m_place;
    int m_vetted = 0;
};

} // namespace velto
