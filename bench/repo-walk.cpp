// The walk over the repositories below a folder, compared with the same git calls made one after another by posix_spawn through
// env. The two take turns. Prints the milliseconds of both for each round, and at the end how many repositories were read.
// Usage: repo-walk FOLDER ROUNDS

#include "Feeds/Repositories/RepoState.h"
#include "Platform/Posix/PosixToolRunner.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

template <typename Work> double milliseconds(Work work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

/// The output is read, since git would block otherwise, and dropped.
std::size_t plainCall(const std::string &path)
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        std::abort();
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    std::array<std::string, 7> words{"env", "git", "-C", path, "status", "--porcelain=v2", "--branch"};
    std::array<char *, words.size() + 1> args{};
    for (std::size_t i = 0; i < words.size(); ++i)
        args[i] = words[i].data();
    pid_t pid = 0;
    if (::posix_spawn(&pid, "/usr/bin/env", &actions, nullptr, args.data(), environ) != 0)
        std::abort();
    ::close(ends[1]);
    std::array<char, 65536> printed; // NOLINT(cppcoreguidelines-pro-type-member-init): read() fills what is used
    std::size_t size = 0;
    for (ssize_t got = 1; (got = ::read(ends[0], printed.data(), printed.size())) > 0;)
        size += std::size_t(got);
    ::close(ends[0]);
    ::waitpid(pid, nullptr, 0);
    ::posix_spawn_file_actions_destroy(&actions);
    return size;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    const QStringList roots{QString::fromLocal8Bit(argv[1])};
    velto::PosixToolRunner tools(qEnvironmentVariable("PATH").split(u':'));
    std::vector<std::string> paths;
    for (const QString &path : velto::findRepos(roots).mid(0, 200))
        paths.push_back(path.toStdString());

    qsizetype read = 0;
    for (int round = 0; round < std::atoi(argv[2]); ++round) {
        const double walk = milliseconds([&] { read = velto::repoStates(tools, roots).size(); });
        const double plain = milliseconds([&] {
            for (const std::string &path : paths) {
                if (plainCall(path) == 0)
                    std::abort();
            }
        });
        std::printf("%.3f %.3f\n", walk, plain);
    }
    std::printf("%lld\n", static_cast<long long>(read));
    return 0;
}
