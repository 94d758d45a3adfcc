#pragma once

#include <sys/stat.h>
#include <sys/types.h>

namespace velto {

/// The system calls behind PosixFiles, each with the arguments, result and errno of its namesake. A table of its own, so that
/// tests can make any step fail as a full or dying disk does. Stateless; any thread.
class FileCalls {
public:
    FileCalls() = default;
    FileCalls(const FileCalls &) = delete;
    FileCalls &operator=(const FileCalls &) = delete;
    virtual ~FileCalls() = default;

    /// The real ones.
    static FileCalls &real();

    virtual int open(const char *path, int flags, mode_t mode);
    virtual int close(int file);
    virtual int dup(int file); ///< not inherited by children
    virtual ssize_t read(int file, void *bytes, size_t size);
    virtual ssize_t write(int file, const void *bytes, size_t size);
    virtual int stat(const char *path, struct stat *info);
    virtual int fstat(int file, struct stat *info);
    virtual int access(const char *path, int wanted);
    virtual ssize_t readlink(const char *path, char *target, size_t size);
    virtual int mkdir(const char *path, mode_t mode);
    virtual int fchown(int file, uid_t owner, gid_t group);
    virtual int fchmod(int file, mode_t mode);
    virtual int flock(int file, int operation);
    virtual int fdatasync(int file);
    virtual int fsync(int file);
    virtual int rename(const char *from, const char *to);
    virtual int unlink(const char *path);
};

} // namespace velto
