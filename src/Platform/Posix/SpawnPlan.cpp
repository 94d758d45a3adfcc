#include "Platform/Posix/SpawnPlan.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace velto {

int openPipe(PipeEnds &ends)
{
    std::array<int, 2> fds{};
    if (::pipe2(fds.data(), O_CLOEXEC) != 0)
        return errno;
    ends = {Descriptor(fds[0]), Descriptor(fds[1])};
    for (Descriptor *end : {&ends.read, &ends.write}) {
        if (end->get() > STDERR_FILENO)
            continue;
        const int moved = ::fcntl(end->get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        if (moved < 0)
            return errno;
        *end = Descriptor(moved);
    }
    return 0;
}

Descriptor endOf(pid_t child)
{
#ifdef SYS_pidfd_open
    return Descriptor(int(::syscall(SYS_pidfd_open, child, 0)));
#else
    return {};
#endif
}

SpawnPlan::SpawnPlan()
{
    ::posix_spawn_file_actions_init(&m_actions);
    ::posix_spawnattr_init(&m_attributes);
}

SpawnPlan::~SpawnPlan()
{
    ::posix_spawn_file_actions_destroy(&m_actions);
    ::posix_spawnattr_destroy(&m_attributes);
}

int SpawnPlan::prepare(int out, int err, const std::string &cwd)
{
    sigset_t none;
    sigset_t all;
    ::sigemptyset(&none);
    ::sigfillset(&all);
    ::posix_spawnattr_setsigmask(&m_attributes, &none);
    ::posix_spawnattr_setsigdefault(&m_attributes, &all);
    ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    ::posix_spawnattr_setpgroup(&m_attributes, 0);

    const std::array results{
        ::posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0),
        ::posix_spawn_file_actions_adddup2(&m_actions, out, STDOUT_FILENO),
        ::posix_spawn_file_actions_adddup2(&m_actions, err, STDERR_FILENO),
        ::posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1),
        cwd.empty() ? 0 : ::posix_spawn_file_actions_addchdir_np(&m_actions, cwd.c_str()),
    };
    const auto *const failed = std::ranges::find_if(results, [](int result) { return result != 0; });
    return failed == results.end() ? 0 : *failed;
}

int SpawnPlan::spawn(pid_t &pid, char *const *args, char *const *environment) const
{
    return ::posix_spawn(&pid, "/usr/bin/env", &m_actions, &m_attributes, args, environment);
}

} // namespace velto
