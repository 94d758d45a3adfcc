#pragma once

#include <QByteArrayView>
#include <QDateTime>
#include <QString>
#include <filesystem>
#include <memory>
#include <optional>

namespace velto {

class FileTree;
class FolderChanges;
class ToolRunner;

/// What a look at the Downloads folder found.
struct Transfers {
    int count = 0; ///< unfinished downloads
    /// When the folder was last changed, once that is reliable: a folder with the same stamp needn't be listed again.
    std::optional<std::filesystem::file_time_type> stamp;
    std::shared_ptr<FolderChanges> changes; ///< since this was found; null where nobody tells

    /// Whether a look would find the same. Quick; asks once for each change.
    bool stillSo() const;
    /// While it is so: see FolderChanges::descriptor().
    int descriptor() const;
};

/// Counts the unfinished downloads directly in a folder, hidden ones too; 0 if it can't be listed. A folder that hasn't changed
/// since `before` costs one look at its stamp, however many entries it has; a missing one is watched until it may exist.
/// Blocks for the disk.
Transfers readTransfers(const FileTree &tree, const QString &folder, const Transfers &before, const QDateTime &now);

/// How many workflow runs are listed, at most ten: `gh run list --json` (https://cli.github.com/manual/gh_run_list). 0 if the
/// text isn't such a listing. Any thread.
int parseFailedBuilds(QByteArrayView listing);

/// How many of the last workflow runs failed, according to the GitHub CLI in the folder that this program runs in. Nothing
/// if that is missing or fails. Blocks for up to 22 seconds.
std::optional<int> readFailedBuilds(ToolRunner &tools);

} // namespace velto
