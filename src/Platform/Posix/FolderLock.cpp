#include "Platform/Posix/FolderLock.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velto {

namespace {

constexpr mode_t kPrivateFolder = 0700;
constexpr mode_t kPrivateFile = 0600;

void makeFolder(const QString &folder)
{
    if (::mkdir(QFile::encodeName(folder).constData(), kPrivateFolder) == 0 || errno != ENOENT)
        return;
    const QString parent = QFileInfo(folder).path();
    if (parent.size() >= folder.size())
        return;
    makeFolder(parent);
    ::mkdir(QFile::encodeName(folder).constData(), kPrivateFolder);
}

enum class Lock { Ours, Taken, Impossible };

Lock lock(const Descriptor &file)
{
    if (!file)
        return Lock::Impossible;
    if (::flock(file.get(), LOCK_EX | LOCK_NB) == 0)
        return Lock::Ours;
    return errno == EWOULDBLOCK ? Lock::Taken : Lock::Impossible;
}

/// Without a runtime folder the lock is in the temporary one, where others may write too: a file of theirs must not be locked.
Descriptor openSecond(const QString &folder)
{
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    const QByteArray name = QCryptographicHash::hash(QFile::encodeName(folder), QCryptographicHash::Sha1).toHex().left(16);
    const QByteArray path = runtime.isEmpty() ? "/tmp/velto-" + QByteArray::number(qulonglong(::getuid())) + '-' + name + ".lock"
                                              : runtime + "/velto-" + name + ".lock";
    Descriptor file(::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, kPrivateFile));
    struct stat info = {};
    if (!file || ::fstat(file.get(), &info) != 0 || info.st_uid != ::getuid() || !S_ISREG(info.st_mode))
        return {};
    return file;
}

} // namespace

FolderLock::FolderLock(QString folder)
    : m_folder(std::move(folder))
{
}

bool FolderLock::take()
{
    makeFolder(m_folder);
    const QByteArray path = QFile::encodeName(m_folder);
    m_lock = Descriptor(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    Lock result = lock(m_lock);
    if (result == Lock::Impossible) {
        // A network file system locks only files opened for writing, which a folder can't be.
        m_lock = Descriptor(::open((path + "/lock").constData(), O_RDWR | O_CREAT | O_CLOEXEC, kPrivateFile));
        result = lock(m_lock);
    }
    m_second = openSecond(m_folder);
    return result != Lock::Taken && lock(m_second) != Lock::Taken;
}

} // namespace velto
