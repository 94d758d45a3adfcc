#include "Platform/Posix/PosixFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr int kMostLinks = 40; // the kernel's limit
constexpr auto kTemporaryStart = ".velto-"_L1;
constexpr auto kTemporaryEnd = ".tmp"_L1;
constexpr mode_t kPrivateFile = 0600;
constexpr mode_t kPrivateFolder = 0700;

template <typename Call> auto retried(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

QByteArray folderOf(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.left(std::max<qsizetype>(slash, 1));
}

QString nameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

/// Some file systems can't sync folders, or anything; that is no reason to refuse to write there.
bool canNotSync(int error)
{
    return error == EINVAL || error == ENOSYS || error == ENOTSUP;
}

int irregular(const struct stat &info)
{
    if (S_ISREG(info.st_mode))
        return 0;
    return S_ISDIR(info.st_mode) ? EISDIR : ENOTSUP;
}

} // namespace

PosixFiles::PosixFiles(FileCalls &calls)
    : m_calls(calls)
{
}

std::variant<QByteArray, FileError> PosixFiles::read(const QString &path, qint64 maximum) const
{
    const auto failure = [&path](int error) {
        return FileError{
            QCoreApplication::translate("PosixFiles", "%1 can't be read: %2.").arg(nameOf(path), qt_error_string(error)),
            error == ENOENT};
    };
    const QByteArray name = QFile::encodeName(path);
    // Without O_NONBLOCK a pipe in the file's place would block the caller for ever.
    const int file = retried([&] { return m_calls.open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0); });
    if (file < 0)
        return failure(errno);
    QByteArray bytes;
    const int error = readAll(file, maximum, bytes);
    m_calls.close(file);
    if (error != 0)
        return failure(error);
    return bytes;
}

int PosixFiles::readAll(int file, qint64 maximum, QByteArray &bytes) const
{
    constexpr qint64 kChunk = 65536;
    struct stat info = {};
    if (m_calls.fstat(file, &info) != 0)
        return errno;
    if (const int error = irregular(info); error != 0)
        return error;
    if (info.st_size > maximum)
        return EFBIG;
    bytes.resize(std::min(maximum, std::max<qint64>(info.st_size, kChunk)) + 1);
    qint64 size = 0;
    for (;;) {
        const auto count = retried([&] { return m_calls.read(file, bytes.data() + size, std::size_t(bytes.size() - size)); });
        if (count < 0)
            return errno;
        if (count == 0)
            break;
        size += count;
        if (size > maximum)
            return EFBIG;
        if (size == bytes.size()) // it has grown while being read
            bytes.resize(std::min(maximum, bytes.size() + std::max(kChunk, bytes.size() / 2)) + 1);
    }
    bytes.resize(size);
    return 0;
}

std::optional<FileError> PosixFiles::replace(const QString &path, const QByteArray &bytes,
                                             const std::function<bool()> &stillWanted, Mode mode)
{
    const int error = put(QFile::encodeName(path), bytes, stillWanted, mode);
    if (error == 0)
        return std::nullopt;
    if (error == ECANCELED)
        return FileError{QCoreApplication::translate("PosixFiles", "%1 was left as it was.").arg(nameOf(path))};
    return FileError{
        QCoreApplication::translate("PosixFiles", "%1 can't be written: %2.").arg(nameOf(path), qt_error_string(error))};
}

/// Follows symbolic links to what they name, whether that exists or not.
int PosixFiles::resolve(QByteArray &path) const
{
    for (int followed = 0; followed < kMostLinks; ++followed) {
        QByteArray link(PATH_MAX, Qt::Uninitialized);
        const auto length = m_calls.readlink(path.constData(), link.data(), std::size_t(link.size()));
        if (length < 0)
            return errno == EINVAL || errno == ENOENT ? 0 : errno;
        if (length >= link.size())
            return ENAMETOOLONG;
        link.truncate(length);
        // Not normalised: the kernel resolves ".." from where a linked folder really is.
        path = link.startsWith('/') ? link : folderOf(path) + '/' + link;
    }
    return ELOOP;
}

int PosixFiles::put(QByteArray path, const QByteArray &bytes, const std::function<bool()> &stillWanted, Mode mode)
{
    if (const int error = resolve(path); error != 0)
        return error;
    struct stat old = {};
    const bool exists = m_calls.stat(path.constData(), &old) == 0;
    if (!exists && errno != ENOENT)
        return errno;
    if (exists) {
        if (const int error = irregular(old); error != 0)
            return error;
        if (mode == Mode::Private)
            old.st_mode &= S_IFMT | kPrivateFile;
        // access() lets root write anything; a file that nobody may write to was made so on purpose.
        if ((old.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0)
            return EACCES;
        if (m_calls.access(path.constData(), W_OK) != 0)
            return errno;
    }

    int folder = -1;
    if (const int error = openFolder(folderOf(path), folder); error != 0)
        return error;
    const auto closeFolder = qScopeGuard([&] { m_calls.close(folder); });

    QByteArray temporary;
    int file = -1;
    if (const int error = createBeside(folderOf(path), temporary, file); error != 0)
        return error;
    auto discard = qScopeGuard([&] { m_calls.unlink(temporary.constData()); });
    // Keeps the lock until the file is in its place.
    const int locked = m_calls.dup(file);
    const auto unlock = qScopeGuard([&] { m_calls.close(locked); });

    int error = fill(file, bytes, exists ? &old : nullptr);
    // Some file systems report a full disk only now. The descriptor is closed in any case.
    if (m_calls.close(file) != 0 && error == 0 && errno != EINTR)
        error = errno;
    if (error != 0)
        return error;
    if (stillWanted && !stillWanted())
        return ECANCELED;
    if (m_calls.rename(temporary.constData(), path.constData()) != 0)
        return errno;
    discard.dismiss();
    // The new file is in place, whole and on the disk. If this fails, a power cut may bring back the old one, whole.
    retried([&] { return m_calls.fsync(folder); });
    return 0;
}

int PosixFiles::openFolder(const QByteArray &folder, int &file)
{
    const auto open = [&] {
        return retried([&] { return m_calls.open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); });
    };
    file = open();
    if (file < 0 && errno == ENOENT) {
        if (const int error = makeFolders(folder); error != 0)
            return error;
        file = open();
    }
    return file < 0 ? errno : 0;
}

int PosixFiles::makeFolders(const QByteArray &folder)
{
    if (m_calls.mkdir(folder.constData(), kPrivateFolder) != 0) {
        if (errno == EEXIST)
            return 0;
        const QByteArray parent = folderOf(folder);
        if (errno != ENOENT || parent.size() >= folder.size())
            return errno;
        if (const int error = makeFolders(parent); error != 0)
            return error;
        if (m_calls.mkdir(folder.constData(), kPrivateFolder) != 0 && errno != EEXIST)
            return errno;
    }
    int parent = -1;
    if (openFolder(folderOf(folder), parent) == 0) {
        retried([&] { return m_calls.fsync(parent); });
        m_calls.close(parent);
    }
    return 0;
}

int PosixFiles::createBeside(const QByteArray &folder, QByteArray &path, int &file)
{
    constexpr int kAttempts = 8;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const quint64 random = QRandomGenerator::system()->generate64();
        path = folder + '/' + QString(kTemporaryStart + QString::number(random, 16) + kTemporaryEnd).toLatin1();
        file = retried([&] { return m_calls.open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kPrivateFile); });
        if (file >= 0) {
            // Some file systems have no locks; there a sweep can't lock anything either, and removes nothing.
            (void)m_calls.flock(file, LOCK_EX | LOCK_NB);
            return 0;
        }
        if (errno != EEXIST)
            return errno;
    }
    return EEXIST;
}

void PosixFiles::sweep(const QString &path)
{
    QByteArray file = QFile::encodeName(path);
    if (resolve(file) != 0)
        return;
    const QString folder = QFile::decodeName(folderOf(file));
    // Without a name filter, which would load half a megabyte of regular-expression library at each start.
    for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::NoSymLinks)) {
        if (!name.startsWith(kTemporaryStart) || !name.endsWith(kTemporaryEnd))
            continue;
        const QByteArray left = QFile::encodeName(folder + u'/' + name);
        const int opened = m_calls.open(left.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0);
        if (opened < 0)
            continue;
        if (m_calls.flock(opened, LOCK_EX | LOCK_NB) == 0)
            m_calls.unlink(left.constData());
        m_calls.close(opened);
    }
}

/// Writes the bytes, and the old file's owner and mode if there is one, to the new file, and syncs it.
int PosixFiles::fill(int file, const QByteArray &bytes, const struct stat *old)
{
    for (qsizetype written = 0; written < bytes.size();) {
        const auto count =
            retried([&] { return m_calls.write(file, bytes.constData() + written, std::size_t(bytes.size() - written)); });
        if (count < 0)
            return errno;
        if (count == 0)
            return ENOSPC;
        written += count;
    }
    if (old) {
        struct stat made = {};
        if (m_calls.fstat(file, &made) != 0)
            return errno;
        // Only root can give a file away; otherwise the file becomes the writer's, as with any editor.
        if ((made.st_uid != old->st_uid || made.st_gid != old->st_gid) && m_calls.fchown(file, old->st_uid, old->st_gid) != 0)
            (void)m_calls.fchown(file, uid_t(-1), old->st_gid);
    }
    // For a new file too: the umask may have removed bits.
    if (m_calls.fchmod(file, old ? old->st_mode & 07777 : kPrivateFile) != 0)
        return errno;
    if (retried([&] { return m_calls.fdatasync(file); }) != 0 && !canNotSync(errno))
        return errno;
    return 0;
}

} // namespace velto
