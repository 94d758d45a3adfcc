#include "Platform/Linux/Processes.h"

#include "Platform/Posix/Descriptor.h"

#include <QObject>
#include <QSocketNotifier>
#include <memory>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace velto {

bool processLives(qint64 pid)
{
    // A zombie still has its id; a pidfd reports that the process has ended.
    const Descriptor process(int(syscall(SYS_pidfd_open, pid_t(pid), 0)));
    pollfd end{process.get(), POLLIN, 0};
    return process && poll(&end, 1, 0) == 0;
}

void whenProcessEnds(qint64 pid, QObject *context, std::function<void()> ended)
{
    const auto process = std::make_shared<Descriptor>(int(syscall(SYS_pidfd_open, pid_t(pid), 0)));
    if (!*process) {
        QMetaObject::invokeMethod(context, std::move(ended), Qt::QueuedConnection);
        return;
    }
    auto *end = new QSocketNotifier(process->get(), QSocketNotifier::Read, context);
    QObject::connect(end, &QSocketNotifier::activated, context, [end, process, call = std::move(ended)] {
        end->setEnabled(false);
        end->deleteLater();
        call();
    });
}

} // namespace velto
