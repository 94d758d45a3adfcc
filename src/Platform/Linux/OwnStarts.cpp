#include "Platform/Linux/OwnStarts.h"

#include "Platform/Linux/Processes.h"
#include "Platform/Posix/Descriptor.h"

#include <array>
#include <charconv>
#include <fcntl.h>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace velto {

namespace {

constexpr int kMostNumbers = 1024; ///< so many are asked about sooner than the whole process table is read

/// The page faults of all children that have ended: no program runs without any.
long faultsOfEnded()
{
    rusage usage{};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    return usage.ru_minflt + usage.ru_majflt;
}

/// The last field of /proc/loadavg (proc(5)); 0 if unknown.
int newestNumber()
{
    const Descriptor file(::open("/proc/loadavg", O_RDONLY | O_CLOEXEC));
    std::array<char, 128> room{};
    const ssize_t length = file ? ::read(file.get(), room.data(), room.size()) : 0;
    if (length <= 0)
        return 0;
    const std::string_view line(room.data(), std::size_t(length));
    const std::string_view last = line.substr(line.rfind(' ') + 1);
    int number = 0;
    return std::from_chars(last.data(), last.data() + last.size(), number).ec == std::errc() ? number : 0;
}

} // namespace

void OwnStarts::looked()
{
    m_ended = faultsOfEnded();
    m_before = std::exchange(m_newest, newestNumber());
}

bool OwnStarts::possible() const
{
    return running() || faultsOfEnded() != m_ended;
}

bool OwnStarts::running() const
{
    siginfo_t child{};
    return ::waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) == 0;
}

bool OwnStarts::over()
{
    const int newest = newestNumber();
    // Numbers begin anew at the system's largest one.
    if (m_before <= 0 || newest < m_before || newest - m_before > kMostNumbers)
        return false;
    for (int number = m_before + 1; number <= newest; ++number) {
        if (processLives(number)) // false for threads
            return false;
    }
    looked();
    return true;
}

} // namespace velto
