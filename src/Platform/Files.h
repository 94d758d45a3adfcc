#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <functional>
#include <optional>
#include <variant>

namespace velto {

/// Why a file couldn't be read or written, in one sentence for the user.
struct FileError {
    QString message;
    bool missing = false; ///< there is no such file
};

/// Reading and durable writing of small files. Safe from any thread; blocks for the disk.
class Files {
public:
    Files() = default;
    Files(const Files &) = delete;
    Files &operator=(const Files &) = delete;
    virtual ~Files() = default;

    /// The whole file, following symbolic links. A file of more than `maximum` bytes is an error.
    virtual std::variant<QByteArray, FileError> read(const QString &path, qint64 maximum) const = 0;

    /// What the file's mode becomes. A new file gets 0600 in any case.
    enum class Mode : quint8 {
        Kept,
        Private, ///< its owner's alone; what was tighter stays so
    };

    /// Replaces the file's contents with `bytes` atomically: after a crash, a kill or a full disk the old file or the new one
    /// is there, whole. A symbolic link is followed and stays a link; an existing file keeps its mode unless it is to be private.
    /// Missing folders are created. `stillWanted`, if given, is asked right before the new file takes its place; false gives up
    /// and leaves the old file. Returns nothing on success.
    virtual std::optional<FileError> replace(const QString &path, const QByteArray &bytes,
                                             const std::function<bool()> &stillWanted = {}, Mode mode = Mode::Kept) = 0;

    /// Removes what earlier writes to this file left beside it when they were killed. A write under way is left alone.
    virtual void sweep(const QString &path) = 0;
};

/// Keeps `bytes` in a new file whose name is `prefix` followed by the time; a file that is already there
/// is never overwritten. Returns the full path, or why there is no copy. Blocks; any thread.
std::variant<QString, FileError> keepCopy(Files &files, const QString &prefix, const QDateTime &now, const QByteArray &bytes);

} // namespace velto
