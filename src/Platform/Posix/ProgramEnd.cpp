#include "Platform/Posix/ProgramEnd.h"

#include <cstdlib>
#include <thread>
#include <unistd.h>
#include <utility>

namespace velto {

namespace {

std::function<void()> lastDeed; // exit() takes no arguments

void doLastDeed()
{
    const auto last = std::exchange(lastDeed, {});
    if (!last)
        return;
    last();
    // The other threads still use what would be taken down now.
    std::_Exit(EXIT_FAILURE);
}

} // namespace

void beforeExit(std::function<void()> last)
{
    [[maybe_unused]] static const int once = std::atexit(&doLastDeed);
    lastDeed = std::move(last);
}

void endsWithin(std::chrono::milliseconds limit, int status)
{
    std::thread([limit, status] {
        std::this_thread::sleep_for(limit);
        // A thread that waits for a disk that is gone keeps the process, even from a kill. By then the next start has to find
        // the lock, the port and the name on the bus free.
        ::close_range(STDERR_FILENO + 1, ~0U, 0);
        std::_Exit(status);
    }).detach();
}

} // namespace velto
