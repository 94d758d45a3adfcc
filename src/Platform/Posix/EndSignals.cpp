#include "Platform/Posix/EndSignals.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace velto {

namespace {

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};
std::atomic<int> pipeToWrite = -1; // all that the signal handler may use

void handle(int)
{
    const int error = errno;
    (void)!::write(pipeToWrite, "", 1);
    errno = error;
}

} // namespace

EndSignals::EndSignals(const std::function<void()> &ended)
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_read = Descriptor(ends[0]);
    m_write = Descriptor(ends[1]);
    pipeToWrite = m_write.get();
    m_notifier = std::make_unique<QSocketNotifier>(m_read.get(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this, ended] {
        m_notifier->setEnabled(false);
        ended();
    });
    struct sigaction action { };
    action.sa_handler = &handle;
    action.sa_flags = int(SA_RESETHAND | SA_RESTART);
    for (const int signal : kSignals) {
        struct sigaction old { };
        // The parent may have asked for it to survive a hang-up (nohup).
        if (::sigaction(signal, nullptr, &old) == 0 && old.sa_handler != SIG_IGN)
            ::sigaction(signal, &action, nullptr);
    }
}

EndSignals::~EndSignals()
{
    for (const int signal : kSignals) {
        struct sigaction old { };
        if (::sigaction(signal, nullptr, &old) == 0 && old.sa_handler == &handle)
            std::signal(signal, SIG_DFL);
    }
    pipeToWrite = -1;
}

} // namespace velto
