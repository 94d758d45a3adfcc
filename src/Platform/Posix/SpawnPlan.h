#pragma once

#include "Platform/Posix/Descriptor.h"

#include <spawn.h>
#include <string>
#include <sys/types.h>

namespace velto {

struct PipeEnds {
    Descriptor read;
    Descriptor write;
};

/// Opens a pipe that no child inherits; 0, or the system's error. Both ends lie above the standard streams, so that setting up
/// those of a child never overwrites them.
int openPipe(PipeEnds &ends);

/// Reads as ready once this child has ended; none where the kernel is older than 5.3 or refuses it.
Descriptor endOf(pid_t child);

/// Owns the two records that posix_spawn is told by. The child starts /usr/bin/env with no signal state and no descriptor of
/// ours, as the leader of a process group.
class SpawnPlan {
public:
    SpawnPlan();
    SpawnPlan(const SpawnPlan &) = delete;
    SpawnPlan &operator=(const SpawnPlan &) = delete;
    ~SpawnPlan();

    /// 0, or the system's error. An empty `cwd` is the program's own.
    int prepare(int out, int err, const std::string &cwd);
    /// 0, or the system's error.
    int spawn(pid_t &pid, char *const *args, char *const *environment) const;

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

} // namespace velto
