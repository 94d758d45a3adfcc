#pragma once

#include "Platform/Files.h"
#include "Platform/Posix/FileCalls.h"

struct stat;

namespace velto {

/// Files on a POSIX system. A write goes to a new file in the folder of the old one, is forced to the disk, and takes the old
/// one's place by a rename; whatever fails on the way, the old file stands whole and the new one is gone. A file whose owner made
/// it read-only is left alone, even by root. Missing folders are created for the user alone (0700). A new file is locked (flock)
/// until it takes its place: one without a lock is what a kill has left.
class PosixFiles final : public Files {
public:
    explicit PosixFiles(FileCalls &calls = FileCalls::real());

    std::variant<QByteArray, FileError> read(const QString &path, qint64 maximum) const override;
    std::optional<FileError> replace(const QString &path, const QByteArray &bytes, const std::function<bool()> &stillWanted = {},
                                     Mode mode = Mode::Kept) override;
    void sweep(const QString &path) override;

private:
    // These give 0 or an errno.
    int readAll(int file, qint64 maximum, QByteArray &bytes) const;
    int resolve(QByteArray &path) const;
    int put(QByteArray path, const QByteArray &bytes, const std::function<bool()> &stillWanted, Mode mode);
    int openFolder(const QByteArray &folder, int &file);
    int makeFolders(const QByteArray &folder);
    int createBeside(const QByteArray &folder, QByteArray &path, int &file);
    int fill(int file, const QByteArray &bytes, const struct stat *old);

    FileCalls &m_calls;
};

} // namespace velto
