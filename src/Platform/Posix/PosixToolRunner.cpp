#include "Platform/Posix/PosixToolRunner.h"

#include "Platform/Posix/GitHubAccount.h"
#include "Platform/Posix/SpawnPlan.h"

#include <QCoreApplication>
#include <QFile>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

using namespace std::chrono_literals;

namespace velto {

namespace {

constexpr auto kLastGrace = 300ms; ///< what a tool that is asked to end gets when the program ends
constexpr auto kLongestPause = 250ms;
constexpr auto kLinger = 1s; ///< what a tool gets to end before its output is read
constexpr std::chrono::duration<double> kLongestTimeout = 24h;
constexpr qsizetype kChunk = 65536;
constexpr int kPipeRoom = 1048576; ///< bytes; the most that Linux gives unless it is told otherwise
constexpr qsizetype kMegabyte = 1048576;

std::string nativePath(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

std::vector<char *> pointers(std::vector<std::string> &texts)
{
    std::vector<char *> result;
    result.reserve(texts.size() + 1);
    for (std::string &text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

/// `all` with the changes made for the tool.
std::vector<std::string> withChanges(std::vector<std::string> all, const ToolEnvironment &changes)
{
    for (const auto &[name, value] : changes) {
        const std::string start = name.toStdString() + '=';
        std::erase_if(all, [&start](const std::string &entry) { return entry.starts_with(start); });
        if (value)
            all.push_back(start + value->toStdString());
    }
    return all;
}

} // namespace

struct PosixToolRunner::Child {
    pid_t pid = -1;
    Descriptor end; ///< see endOf()
    Descriptor outPipe;
    Descriptor errPipe;
    QByteArray out;
    QByteArray err;
    bool exited = false;
    int status = 0;

    bool isReading() const { return outPipe || errPipe; }
    qsizetype printed() const { return out.size() + err.size(); }

    static void take(Descriptor &pipe, QByteArray &into)
    {
        std::array<char, kChunk> chunk; // NOLINT(cppcoreguidelines-pro-type-member-init): read() fills what is used
        const ssize_t got = ::read(pipe.get(), chunk.data(), chunk.size());
        if (got > 0)
            into.append(chunk.data(), got);
        else if (got == 0 || errno != EINTR)
            pipe = Descriptor();
    }
    /// Checks whether the tool has ended, without waiting.
    void look()
    {
        const pid_t got = ::waitpid(pid, &status, WNOHANG);
        if (got < 0 && errno == ECHILD)
            status = -1;
        exited = got == pid || (got < 0 && errno == ECHILD);
    }
    bool succeeded() const { return exited && WIFEXITED(status) && WEXITSTATUS(status) == 0; }
};

PosixToolRunner::PosixToolRunner(const QStringList &searchPath, qsizetype maximumOutput, std::chrono::milliseconds lastWords)
    : m_maximumOutput(maximumOutput)
    , m_lastWords(lastWords)
{
    for (const QString &folder : searchPath)
        m_searchPath.push_back(nativePath(folder));
    constexpr std::string_view kPath = "PATH=";
    for (char **entry = environ; entry && *entry; ++entry) {
        if (!std::string_view(*entry).starts_with(kPath))
            m_environment.emplace_back(*entry);
    }
    m_environment.push_back(std::string(kPath) + nativePath(searchPath.join(QLatin1Char(':'))));

    PipeEnds stop;
    if (openPipe(stop) == 0) {
        m_stopped = ::dup(stop.read.get());
        ::fcntl(m_stopped, F_SETFD, FD_CLOEXEC);
        m_stopper = ::fcntl(stop.write.get(), F_DUPFD_CLOEXEC, 0);
    }
    // A parent may have left SIGCHLD ignored; no exit status would ever reach us then.
    struct sigaction action { };
    if (::sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN)
        ::signal(SIGCHLD, SIG_DFL);
}

PosixToolRunner::~PosixToolRunner()
{
    stop();
    reapLeft();
    if (m_stopped >= 0)
        ::close(m_stopped);
}

void PosixToolRunner::stop()
{
    const int stopper = m_stopper.exchange(-1);
    if (stopper >= 0)
        ::close(stopper);
    reapLeft();
    const std::lock_guard lock(m_leftMutex);
    for (const pid_t pid : m_left)
        ::kill(-pid, SIGKILL);
}

std::string PosixToolRunner::find(const QString &name) const
{
    const std::string file = nativePath(name);
    for (const std::string &folder : m_searchPath) {
        std::string path = folder;
        path += '/';
        path += file;
        struct stat facts { };
        if (::access(path.c_str(), X_OK) == 0 && ::stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode))
            return path;
    }
    return {};
}

bool PosixToolRunner::toolInstalled(const QString &name) const
{
    return !find(name).empty();
}

bool PosixToolRunner::mayBeSignedIn(const QString &name) const
{
    return name != QLatin1StringView("gh") || githubAccountPossible(find(name), m_environment);
}

int PosixToolRunner::spawn(const QStringList &args, const QString &cwd, const ToolEnvironment &environment, Child &child) const
{
    PipeEnds out;
    PipeEnds err;
    SpawnPlan plan;
    for (PipeEnds *ends : {&out, &err}) {
        if (const int error = openPipe(*ends))
            return error;
    }
#ifdef F_SETPIPE_SZ
    ::fcntl(out.read.get(), F_SETPIPE_SZ, kPipeRoom); // if it is refused, tools that print much wait a little
#endif
    if (const int error = plan.prepare(out.write.get(), err.write.get(), nativePath(cwd)))
        return error;

    std::vector<std::string> words{"/usr/bin/env"};
    for (const QString &arg : args)
        words.push_back(arg.toStdString());
    std::vector<std::string> variables = withChanges(m_environment, environment);
    if (const int error = plan.spawn(child.pid, pointers(words).data(), pointers(variables).data()))
        return error;
    child.end = endOf(child.pid);
    child.outPipe = std::move(out.read);
    child.errPipe = std::move(err.read);
    return 0;
}

PosixToolRunner::End PosixToolRunner::drain(Child &child, std::chrono::steady_clock::time_point deadline) const
{
    const auto left = [deadline] {
        return std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    };
    // Most tools print a little and end: that should wake this thread once and not for each step on the way. What doesn't fit
    // into the pipe waits there.
    if (child.end) {
        std::array<pollfd, 2> ends{{{m_stopped, POLLIN, 0}, {child.end.get(), POLLIN, 0}}};
        ::poll(ends.data(), ends.size(), int(std::clamp<std::chrono::milliseconds>(left() / 2, 0ms, kLinger).count()));
    }
    while (child.isReading()) {
        const auto limit = left();
        if (limit.count() <= 0)
            return End::Deadline;
        // poll() skips negative descriptors.
        std::array<pollfd, 3> fds{{{child.outPipe.get(), POLLIN, 0}, {child.errPipe.get(), POLLIN, 0}, {m_stopped, POLLIN, 0}}};
        if (::poll(fds.data(), fds.size(), int(limit.count())) <= 0)
            continue;
        if (fds[2].revents)
            return End::Stopped;
        if (fds[0].revents)
            Child::take(child.outPipe, child.out);
        if (fds[1].revents)
            Child::take(child.errPipe, child.err);
        if (child.printed() > m_maximumOutput)
            return End::TooMuch;
    }
    return End::Closed;
}

bool PosixToolRunner::pausedUntilStopped(std::chrono::milliseconds pause) const
{
    pollfd stopped{m_stopped, POLLIN, 0};
    return ::poll(&stopped, 1, int(pause.count())) > 0;
}

PosixToolRunner::End PosixToolRunner::awaitExit(Child &child, std::chrono::steady_clock::time_point deadline) const
{
    // Nearly always it is about to end. poll() also hears stop(), which couldn't interrupt waitpid(). Without a pidfd the tool
    // is checked at growing intervals.
    std::chrono::milliseconds pause = 1ms;
    for (child.look(); !child.exited; child.look()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0)
            return End::Deadline;
        std::array<pollfd, 2> fds{{{m_stopped, POLLIN, 0}, {child.end.get(), POLLIN, 0}}};
        if (::poll(fds.data(), fds.size(), int((child.end ? left : std::min(left, pause)).count())) > 0 && fds[0].revents)
            return End::Stopped;
        pause = std::min(2 * pause, std::chrono::milliseconds(kLongestPause));
    }
    return End::Closed;
}

RunResult PosixToolRunner::run(const QStringList &args, const QString &cwd, std::chrono::duration<double> timeout,
                               const ToolEnvironment &environment)
{
    reapLeft();
    Child child;
    if (pausedUntilStopped(0ms))
        return conclude(child, End::Stopped, timeout);
    const auto limit = std::clamp<std::chrono::duration<double>>(timeout, 0s, kLongestTimeout);
    const auto start = std::chrono::steady_clock::now();
    if (const int error = spawn(args, cwd, environment, child))
        return {false, {}, QString::fromStdString(std::system_category().message(error))};

    End end = drain(child, start + std::chrono::ceil<std::chrono::milliseconds>(limit));
    // A tool that has closed its streams but doesn't end gets the same time as one that is asked to end.
    if (end == End::Closed)
        end = awaitExit(child, start + std::chrono::ceil<std::chrono::milliseconds>(limit) + m_lastWords);
    return conclude(child, end, timeout);
}

RunResult PosixToolRunner::conclude(Child &child, End end, std::chrono::duration<double> timeout)
{
    if (end == End::Stopped && child.pid > 0) {
        ::kill(-child.pid, SIGTERM);
        pollfd fd{child.end.get(), POLLIN, 0};
        ::poll(&fd, 1, int(std::chrono::milliseconds(kLastGrace).count()));
        ::kill(-child.pid, SIGKILL);
        leave(child);
    } else if (end != End::Closed && child.pid > 0) {
        ::kill(-child.pid, SIGTERM); // with all that it started: what outlives it would pile up from run to run
        if (end == End::Deadline)
            drain(child, std::chrono::steady_clock::now() + m_lastWords);
        leave(child);
    }
    switch (end) {
    case End::Closed:
        return {child.succeeded(), child.out, QString::fromUtf8(child.err)};
    case End::Deadline:
        return {false, child.out,
                QCoreApplication::translate("ToolRunner", "timed out after %1 s").arg(qint64(std::trunc(timeout.count())))};
    case End::TooMuch:
        return {false, child.out,
                QCoreApplication::translate("ToolRunner", "printed more than %1 MB").arg(m_maximumOutput / kMegabyte)};
    case End::Stopped:
        return {false, child.out, QCoreApplication::translate("ToolRunner", "given up, because Velto is ending")};
    }
    Q_UNREACHABLE();
}

void PosixToolRunner::leave(const Child &child)
{
    const std::lock_guard lock(m_leftMutex);
    m_left.push_back(child.pid);
}

void PosixToolRunner::reapLeft()
{
    const std::lock_guard lock(m_leftMutex);
    std::erase_if(m_left, [](pid_t pid) { return ::waitpid(pid, nullptr, WNOHANG) != 0; });
}

} // namespace velto
