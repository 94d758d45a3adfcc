#include "Platform/Linux/RecorderProcesses.h"

#include "Platform/Linux/ApplicationNames.h"

#include <QFile>
#include <QSocketNotifier>
#include <dirent.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

QSet<int> processes()
{
    QSet<int> found;
    auto *folder = ::opendir("/proc");
    if (!folder)
        return found;
    while (const auto *entry = ::readdir(folder)) {
        const int process = int(std::strtol(entry->d_name, nullptr, 10));
        if (process > 0)
            found.insert(process);
    }
    ::closedir(folder);
    return found;
}

QString processName(int process)
{
    QFile file(u"/proc/%1/comm"_s.arg(process));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}

} // namespace

struct RecorderProcesses::Recorder {
    QString identifier;
    int descriptor = -1;
    std::unique_ptr<QSocketNotifier> notifier;

    Recorder() = default;
    Recorder(const Recorder &) = delete;
    Recorder &operator=(const Recorder &) = delete;
    ~Recorder()
    {
        notifier.reset();
        if (descriptor >= 0)
            ::close(descriptor);
    }
};

RecorderProcesses::~RecorderProcesses() = default;

bool RecorderProcesses::look()
{
    const auto now = processes();
    const auto before = m_recorders.size();
    for (const int process : now)
        if (!m_seen.contains(process))
            if (const auto identifier = recorderForProcess(processName(process)); !identifier.isEmpty())
                follow(process, identifier);
    m_seen = now;
    return m_recorders.size() != before;
}

void RecorderProcesses::follow(int process, const QString &identifier)
{
    auto recorder = std::make_shared<Recorder>();
    recorder->identifier = identifier;
    recorder->descriptor = int(::syscall(SYS_pidfd_open, process, 0));
    if (recorder->descriptor < 0)
        return;
    recorder->notifier = std::make_unique<QSocketNotifier>(recorder->descriptor, QSocketNotifier::Read);
    connect(recorder->notifier.get(), &QSocketNotifier::activated, this, [this, process] {
        // The notifier is in the middle of its own signal: it goes with the event loop's next turn.
        const auto over = m_recorders.take(process);
        if (!over)
            return;
        over->notifier->setEnabled(false);
        QMetaObject::invokeMethod(
            this, [over] {}, Qt::QueuedConnection);
        Q_EMIT ended();
    });
    m_recorders.insert(process, recorder);
}

QStringList RecorderProcesses::running() const
{
    QStringList identifiers;
    for (const auto &recorder : m_recorders)
        identifiers.append(recorder->identifier);
    return identifiers;
}

} // namespace velto
