#pragma once

#include "Platform/Posix/FileCalls.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QString>
#include <QTest>
#include <algorithm>
#include <cerrno>

namespace velto {

/// Where a test's folder goes: in memory if the system has a place for that, since a busy disk can make writes wait for
/// seconds.
inline QString scratchTemplate()
{
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/velto-test-XXXXXX");
}

inline void writeFile(const QString &path, const QByteArray &bytes, mode_t mode = 0600)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("can't prepare %s", qPrintable(path));
    file.close();
    ::chmod(QFile::encodeName(path).constData(), mode);
}

/// Null if there is no such file.
inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    return bytes.isNull() ? QByteArray("") : bytes;
}

inline int modeOf(const QString &path)
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? int(info.st_mode & 07777) : -1;
}

inline QStringList filesIn(const QString &folder, const QString &pattern = QStringLiteral("*"))
{
    return QDir(folder).entryList({pattern}, QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

/// Starts the test program itself with these arguments, so that it tells on standard output which of its states it has written,
/// one a line; ends it each time a little later within a write, and compares what `stored` reads with what it told.
template <typename Stored> void killAtAnyMoment(const QStringList &arguments, int kills, Stored stored)
{
    int announced = 0;
    for (int kill = 0; kill < kills; ++kill) {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), arguments);
        const int least = announced + 1 + kill % 3;
        while (announced < least) {
            QVERIFY(child.canReadLine() || child.waitForReadyRead());
            while (child.canReadLine())
                announced = child.readLine().trimmed().toInt();
        }
        QElapsedTimer timer;
        timer.start();
        while (timer.nsecsElapsed() < kill % 100 * 20000) { }
        child.kill();
        QVERIFY(child.waitForFinished());
        while (child.canReadLine())
            announced = child.readLine().trimmed().toInt();
        const int state = stored();
        QVERIFY2(state == announced || state == announced + 1, qPrintable(QStringLiteral("%1 of %2").arg(state).arg(announced)));
        announced = state;
    }
}

/// A disk on which one step fails. It doesn't wait for the real one: what a test sees doesn't hang on that.
class FaultyCalls final : public FileCalls {
public:
    int failAt = 0; ///< the step that fails, counted from 1; 0 is none
    int error = EIO;
    int steps = 0;
    bool interrupted = false; ///< each call that may be interrupted is, once
    std::size_t longestWrite = SIZE_MAX;
    int renames = 0;
    bool failedBeforeRename = false;

    int open(const char *path, int flags, mode_t mode) override
    {
        return fails() || interrupts() ? -1 : FileCalls::open(path, flags, mode);
    }
    int close(int file) override
    {
        const int result = FileCalls::close(file);
        return fails() ? -1 : result;
    }
    ssize_t read(int file, void *bytes, size_t size) override
    {
        return fails() || interrupts() ? -1 : FileCalls::read(file, bytes, size);
    }
    ssize_t write(int file, const void *bytes, size_t size) override
    {
        return fails() || interrupts() ? -1 : FileCalls::write(file, bytes, std::min(size, longestWrite));
    }
    int stat(const char *path, struct stat *info) override { return fails() ? -1 : FileCalls::stat(path, info); }
    int fstat(int file, struct stat *info) override { return fails() ? -1 : FileCalls::fstat(file, info); }
    int access(const char *path, int wanted) override { return fails() ? -1 : FileCalls::access(path, wanted); }
    ssize_t readlink(const char *path, char *target, size_t size) override
    {
        return fails() ? -1 : FileCalls::readlink(path, target, size);
    }
    int mkdir(const char *path, mode_t mode) override { return fails() ? -1 : FileCalls::mkdir(path, mode); }
    int fchown(int file, uid_t owner, gid_t group) override { return fails() ? -1 : FileCalls::fchown(file, owner, group); }
    int fchmod(int file, mode_t mode) override { return fails() ? -1 : FileCalls::fchmod(file, mode); }
    int fdatasync(int) override { return fails() || interrupts() ? -1 : 0; }
    int fsync(int) override { return fails() || interrupts() ? -1 : 0; }
    int rename(const char *from, const char *to) override
    {
        if (fails())
            return -1;
        ++renames;
        return FileCalls::rename(from, to);
    }

private:
    bool fails()
    {
        if (++steps != failAt)
            return false;
        failedBeforeRename = renames == 0;
        errno = error;
        return true;
    }
    bool interrupts()
    {
        m_interruptNow = interrupted && !m_interruptNow;
        if (m_interruptNow)
            errno = EINTR;
        return m_interruptNow;
    }

    bool m_interruptNow = false;
};

} // namespace velto
