#include "Platform/Linux/DetachedProcess.h"

#include <QFile>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace velto {

namespace {

/// In the grandchild: only what is safe after a fork in a multithreaded program.
[[noreturn]] void become(const char *program, char *const *arguments, const char *folder, int report)
{
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    // A signal that a program ignores stays ignored in the programs it starts.
    ::signal(SIGPIPE, SIG_DFL);
    ::signal(SIGXFSZ, SIG_DFL);
    const int nothing = ::open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::dup2(nothing, stream);
    if (::chdir(folder) != 0 && ::chdir("/") != 0)
        ::_exit(127);
    // The report closes by itself when execv() succeeds, like every other descriptor.
    ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    ::execv(program, arguments);
    const char failed = 1;
    [[maybe_unused]] const auto written = ::write(report, &failed, 1);
    ::_exit(127);
}

} // namespace

/// The toolkit's own detached start leaks descriptors that aren't marked close-on-exec into the new program.
bool startDetached(const QString &program, const QStringList &arguments, const QString &folder)
{
    std::vector<QByteArray> texts{QFile::encodeName(program)};
    for (const auto &argument : arguments)
        texts.push_back(QFile::encodeName(argument));
    std::vector<char *> pointers;
    for (auto &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    const auto where = QFile::encodeName(folder);
    int report[2];
    if (::pipe2(report, O_CLOEXEC) != 0)
        return false;
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        const pid_t grandchild = ::fork();
        if (grandchild == 0)
            become(pointers.front(), pointers.data(), where.constData(), report[1]);
        ::_exit(grandchild < 0 ? 1 : 0);
    }
    ::close(report[1]);
    int status = 1;
    while (child > 0 && ::waitpid(child, &status, 0) < 0 && errno == EINTR)
        continue;
    char failed = 0;
    ssize_t got = 0;
    while ((got = ::read(report[0], &failed, 1)) < 0 && errno == EINTR)
        continue;
    ::close(report[0]);
    return child > 0 && status == 0 && got == 0;
}

} // namespace velto
