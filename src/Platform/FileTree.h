#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace velto {

/// A file that was found in a tree of folders.
struct TreeFile {
    std::string path; ///< full, in the bytes of the file system
    qint64 modified = 0; ///< milliseconds since 1970
    quint64 size = 0; ///< bytes
};

/// What happens to a folder from the making of this on.
class FolderChanges {
public:
    FolderChanges() = default;
    FolderChanges(const FolderChanges &) = delete;
    FolderChanges &operator=(const FolderChanges &) = delete;
    virtual ~FolderChanges() = default;

    /// Whether something came to the folder, went from it or got another name since the last call. Quick; one thread at a time.
    virtual bool any() = 0;
    /// A file descriptor that is readable while any() would find something; open as long as this lives.
    virtual int descriptor() const = 0;
};

/// Looks through trees of folders that hold hundreds of files, many times a day. Safe from any thread; blocks for the disk.
class FileTree {
public:
    FileTree() = default;
    FileTree(const FileTree &) = delete;
    FileTree &operator=(const FileTree &) = delete;
    virtual ~FileTree() = default;

    /// Calls `found` for each file below `folder`, at any depth and in any order, whose name is something followed by `suffix`.
    /// Links to files are followed, links to folders below `folder` are not. What can't be read is skipped.
    virtual void each(const QString &folder, std::string_view suffix,
                      const std::function<void(const TreeFile &)> &found) const = 0;

    /// Follows what happens right in a folder. Null where the system doesn't tell, as for a folder of another computer.
    virtual std::unique_ptr<FolderChanges> changesIn(const QString &folder) const = 0;
};

} // namespace velto
