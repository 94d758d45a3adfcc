#include "Platform/Linux/WatchedProcesses.h"

#include "Platform/Clock.h"
#include "Platform/Linux/ApplicationNames.h"
#include "Platform/Linux/Processes.h"
#include "Platform/Posix/ThreadPoolBackground.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>
#include <algorithm>
#include <array>
#include <charconv>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/auxv.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace velto {

namespace {

constexpr auto kSettling = 1s; ///< a program has its own name a moment after its loader was opened
constexpr auto kCalm = 1s; ///< before that: while many programs start, each other second goes by without a look
constexpr auto kRestingPace = 2s;
constexpr auto kPatience = 800ms; ///< for the end of work that begins; with kCalm and kSettling under three seconds

struct CloseFolder {
    void operator()(DIR *folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

/// The name of a process below an open /proc; null if it has gone. Read into `room`, since this runs for every process.
QByteArrayView nameOf(int processes, const char *process, std::array<char, 64> &room)
{
    const Descriptor file(::openat(processes, (std::string(process) + "/comm").c_str(), O_RDONLY | O_CLOEXEC));
    const ssize_t length = file ? ::read(file.get(), room.data(), room.size()) : 0;
    return {room.data(), std::max<ssize_t>(length - 1, 0)}; // without the line feed
}

QByteArray content(const std::string &path)
{
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    QByteArray result;
    std::array<char, 4096> chunk; // NOLINT(cppcoreguidelines-pro-type-member-init): read() fills what is used
    for (ssize_t got = 1; file && got > 0 && result.size() < 65536;) {
        got = ::read(file.get(), chunk.data(), chunk.size());
        result.append(chunk.data(), std::max<ssize_t>(got, 0));
    }
    return result;
}

/// Whether it may work on the user's screen: it is the user's own, or root's, as with sudo. Otherwise another user of this
/// machine could silence or hide the strip by a program's name. Judged by the real user: a setuid program has another user's
/// files in /proc, although anyone may start it.
bool isOurs(const std::string &process)
{
    const QByteArray status = content(process + "/status");
    const qsizetype line = status.indexOf("\nUid:\t");
    bool known = false;
    const uint user = status.mid(line + 6, status.indexOf('\t', line + 6) - line - 6).toUInt(&known);
    return line >= 0 && known && (user == ::getuid() || user == 0);
}

/// Whether it has buffers of the media server open, that is, sends or receives a stream.
bool streams(const std::string &process)
{
    const Folder descriptors(::opendir((process + "/fd").c_str()));
    while (const dirent *entry = descriptors ? ::readdir(descriptors.get()) : nullptr) {
        std::array<char, 64> target{};
        const ssize_t length = ::readlinkat(::dirfd(descriptors.get()), entry->d_name, target.data(), target.size());
        if (length > 0 && QByteArrayView(target.data(), length).startsWith("/memfd:pipewire"))
            return true;
    }
    return false;
}

} // namespace

struct WatchedProcesses::Followed {
    QString identifier;
    Descriptor end;
    std::unique_ptr<QSocketNotifier> notifier; ///< goes before its descriptor
};

WatchedProcesses::WatchedProcesses(Clock &clock, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
{
    connect(&m_casts, &ScreenCasts::changed, this, &WatchedProcesses::changed);
}

WatchedProcesses::~WatchedProcesses()
{
    m_startNotifier.reset();
}

void WatchedProcesses::start()
{
    // This program's loader is also that of nearly all others.
    Dl_info loader{};
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    const auto *base = reinterpret_cast<const void *>(::getauxval(AT_BASE));
    if (base && ::dladdr(base, &loader) && loader.dli_fname) {
        Descriptor starts(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
        if (starts && ::inotify_add_watch(starts.get(), loader.dli_fname, IN_OPEN) >= 0)
            m_starts = std::move(starts);
    }
    if (m_starts) {
        m_startNotifier = std::make_unique<QSocketNotifier>(m_starts.get(), QSocketNotifier::Read);
        connect(m_startNotifier.get(), &QSocketNotifier::activated, this, &WatchedProcesses::programStarted);
        const auto *loop = QAbstractEventDispatcher::instance();
        connect(loop, &QAbstractEventDispatcher::aboutToBlock, this, &WatchedProcesses::waiting);
        connect(loop, &QAbstractEventDispatcher::awake, this, &WatchedProcesses::awake);
    }
    look();
}

/// A start while things settle is reported right afterwards, so that each program is looked at once it has settled; earlier
/// starts share that look. So programs that start together, such as Velto's own tools, cost one look.
void WatchedProcesses::programStarted()
{
    m_startNotifier->setEnabled(false);
    m_soon = m_clock.after(kCalm, [this] {
        forgetStarts();
        m_soon = m_clock.after(kSettling, [this] {
            look();
            m_startNotifier->setEnabled(true);
        });
    });
}

/// Background work that begins mostly starts a tool of Velto's own, and its end wakes this thread anyway. So starts are ignored
/// until then, and the look for what else has started needs no wake-up. Not for long: another program may start meanwhile.
void WatchedProcesses::waiting()
{
    if (m_workBegan || !ThreadPoolBackground::isAwaited())
        return;
    m_workBegan = true;
    if (!m_startNotifier->isEnabled())
        return;
    m_ignoring = true;
    m_startNotifier->setEnabled(false);
    m_soon = m_clock.after(kPatience, [this] {
        m_ignoring = false;
        m_startNotifier->setEnabled(true);
    });
}

void WatchedProcesses::awake()
{
    if (ThreadPoolBackground::isAwaited())
        return;
    m_workBegan = false;
    if (!std::exchange(m_ignoring, false))
        return;
    m_soon.reset();
    if (forgetStarts())
        look();
    m_startNotifier->setEnabled(true);
}

/// Whether there were any.
bool WatchedProcesses::forgetStarts()
{
    std::array<char, 4096> events; // NOLINT(cppcoreguidelines-pro-type-member-init): only emptied
    bool any = false;
    while (::read(m_starts.get(), events.data(), events.size()) > 0)
        any = true;
    return any;
}

void WatchedProcesses::look()
{
    m_casts.look();
    const QStringList before = running();
    bool resting = false;
    const Folder processes(::opendir("/proc"));
    std::array<char, 64> room{};
    while (const dirent *entry = processes ? ::readdir(processes.get()) : nullptr) {
        const QByteArrayView number(entry->d_name);
        int process = 0;
        if (std::from_chars(number.begin(), number.end(), process).ptr != number.end() || process <= 0)
            continue;
        const auto path = [process] { return "/proc/" + std::to_string(process); };
        const auto program = watchedProgram(nameOf(::dirfd(processes.get()), entry->d_name, room),
                                            [&path] { return content(path() + "/cmdline"); });
        if (!program || !isOurs(path()) || !processLives(process))
            continue;
        resting = resting || program->mayRest;
        const bool counts = !program->mayRest || streams(path());
        if (counts && !m_followed.contains(process))
            follow(process, program->identifier);
        else if (!counts)
            m_followed.remove(process);
    }
    if (!resting)
        m_resting.reset();
    else
        m_resting = m_clock.after(kRestingPace, [this] { look(); });
    if (running() != before)
        Q_EMIT changed();
}

void WatchedProcesses::follow(int process, const QString &identifier)
{
    auto program = std::make_shared<Followed>();
    program->identifier = identifier;
    program->end = Descriptor(int(::syscall(SYS_pidfd_open, process, 0)));
    if (!program->end)
        return;
    program->notifier = std::make_unique<QSocketNotifier>(program->end.get(), QSocketNotifier::Read);
    connect(program->notifier.get(), &QSocketNotifier::activated, this, [this, process] { over(process); });
    m_followed.insert(process, program);
}

void WatchedProcesses::over(int process)
{
    // The notifier is in its own signal, so it is destroyed in the next turn of the event loop.
    const auto ended = m_followed.take(process);
    if (!ended)
        return;
    ended->notifier->setEnabled(false);
    QMetaObject::invokeMethod(
        this, [ended] {}, Qt::QueuedConnection);
    Q_EMIT changed();
}

QStringList WatchedProcesses::running() const
{
    QStringList identifiers;
    if (m_casts.running())
        identifiers.append(kScreenRecorder);
    for (const auto &program : m_followed)
        identifiers.append(program->identifier);
    return identifiers;
}

} // namespace velto
