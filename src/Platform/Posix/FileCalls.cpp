#include "Platform/Posix/FileCalls.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace velto {

FileCalls &FileCalls::real()
{
    static FileCalls calls;
    return calls;
}

int FileCalls::open(const char *path, int flags, mode_t mode)
{
    return ::open(path, flags, mode);
}

int FileCalls::close(int file)
{
    return ::close(file);
}

int FileCalls::dup(int file)
{
    return ::fcntl(file, F_DUPFD_CLOEXEC, 0);
}

ssize_t FileCalls::read(int file, void *bytes, size_t size)
{
    return ::read(file, bytes, size);
}

ssize_t FileCalls::write(int file, const void *bytes, size_t size)
{
    return ::write(file, bytes, size);
}

int FileCalls::stat(const char *path, struct stat *info)
{
    return ::stat(path, info);
}

int FileCalls::fstat(int file, struct stat *info)
{
    return ::fstat(file, info);
}

int FileCalls::access(const char *path, int wanted)
{
    return ::access(path, wanted);
}

ssize_t FileCalls::readlink(const char *path, char *target, size_t size)
{
    return ::readlink(path, target, size);
}

int FileCalls::mkdir(const char *path, mode_t mode)
{
    return ::mkdir(path, mode);
}

int FileCalls::fchown(int file, uid_t owner, gid_t group)
{
    return ::fchown(file, owner, group);
}

int FileCalls::fchmod(int file, mode_t mode)
{
    return ::fchmod(file, mode);
}

int FileCalls::flock(int file, int operation)
{
    return ::flock(file, operation);
}

int FileCalls::fdatasync(int file)
{
    return ::fdatasync(file);
}

int FileCalls::fsync(int file)
{
    return ::fsync(file);
}

int FileCalls::rename(const char *from, const char *to)
{
    return ::rename(from, to);
}

int FileCalls::unlink(const char *path)
{
    return ::unlink(path);
}

} // namespace velto
