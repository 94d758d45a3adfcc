#include "Platform/Posix/ProgramEnd.h"

#include <cstdlib>
#include <thread>
#include <unistd.h>
#include <utility>

namespace velto {

namespace {

// exit() takes no arguments. NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::function<void()> exitAction;

void runExitAction()
{
    const auto last = std::exchange(exitAction, {});
    if (!last)
        return;
    last();
    // The other threads still use what the destructors would take down.
    std::_Exit(EXIT_FAILURE);
}

} // namespace

void beforeExit(std::function<void()> last)
{
    [[maybe_unused]] static const int once = std::atexit(&runExitAction);
    exitAction = std::move(last);
}

void startAnew(char **argv)
{
    ::execv("/proc/self/exe", argv);
}

void endsWithin(std::chrono::milliseconds limit, int status)
{
    std::thread([limit, status] {
        std::this_thread::sleep_for(limit);
        // A thread that waits for a dead disk keeps the process alive, even through a kill. So the lock, the port and the bus
        // name are freed here for the next start.
        ::close_range(STDERR_FILENO + 1, ~0U, 0);
        std::_Exit(status);
    }).detach();
}

} // namespace velto
