#pragma once

#include "Platform/ToolRunner.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <sys/types.h>
#include <vector>

namespace velto {

/// Runs tools through /usr/bin/env, with the environment that the program was started with but for PATH. A tool inherits no
/// descriptor and no signal state of ours. One thread serves one tool: the caller's.
/// Each tool leads a process group of its own. One that exceeds its time is asked to end, with what it started, and then left
/// alone; what remains of it is reaped by later runs, and ends with the program at the latest.
class PosixToolRunner final : public ToolRunner {
public:
    /// What a tool may print, both streams together, before it is abandoned.
    static constexpr qsizetype kMaximumOutput = qsizetype{64} * 1024 * 1024;

    /// `lastWords` is what a tool gets that is asked to end because its time is up.
    explicit PosixToolRunner(const QStringList &searchPath, qsizetype maximumOutput = kMaximumOutput,
                             std::chrono::milliseconds lastWords = std::chrono::seconds(2));
    PosixToolRunner(const PosixToolRunner &) = delete;
    PosixToolRunner &operator=(const PosixToolRunner &) = delete;
    /// No run may be under way.
    ~PosixToolRunner() override;

    using ToolRunner::run;
    RunResult run(const QStringList &args, const QString &cwd, std::chrono::duration<double> timeout,
                  const ToolEnvironment &environment) override;
    bool toolInstalled(const QString &name) const override;
    bool mayBeSignedIn(const QString &name) const override;

    /// Abandons every run under way, and fails every later one: the program is ending. Returns at once; within a third of a
    /// second the runs have ended, and their tools with them, willing or not. Any thread.
    void stop();

private:
    struct Child;
    enum class End : quint8 { Closed, Deadline, TooMuch, Stopped };

    /// The path of the tool with this name; empty if there is none.
    std::string find(const QString &name) const;
    /// Starts the tool; 0, or the system's error.
    int spawn(const QStringList &args, const QString &cwd, const ToolEnvironment &environment, Child &child) const;
    End drain(Child &child, std::chrono::steady_clock::time_point deadline) const;
    /// Waits for the end of a tool that has closed its streams.
    End awaitExit(Child &child, std::chrono::steady_clock::time_point deadline) const;
    RunResult conclude(Child &child, End end, std::chrono::duration<double> timeout);
    bool pausedUntilStopped(std::chrono::milliseconds pause) const;
    void leave(const Child &child);
    void reapLeft();

    std::vector<std::string> m_searchPath;
    std::vector<std::string> m_environment;
    qsizetype m_maximumOutput;
    std::chrono::milliseconds m_lastWords;
    int m_stopped = -1; ///< reads as closed once stop() was called
    std::atomic<int> m_stopper{-1};
    std::mutex m_leftMutex;
    std::vector<pid_t> m_left; ///< children that nobody waited for
};

} // namespace velto
