#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <chrono>
#include <optional>
#include <utility>

namespace velto {

/// Environment variables for a tool, on top of the program's own; one without a value is unset.
using ToolEnvironment = QList<std::pair<QByteArray, std::optional<QByteArray>>>;

/// The outcome of one run of an outside tool.
struct RunResult {
    bool ok = false; ///< it started, ended within its time, and its exit status was 0
    QByteArray out; ///< everything it wrote to its standard output, also when it failed
    QString err; ///< its standard error, or why it couldn't be started or was given up
};

/// The one way to run an outside tool. Safe from any thread.
class ToolRunner {
public:
    ToolRunner() = default;
    ToolRunner(const ToolRunner &) = delete;
    ToolRunner &operator=(const ToolRunner &) = delete;
    virtual ~ToolRunner() = default;

    /// Runs `args` (the tool's name first, found through the search path) and waits for it: up to `timeout` plus two
    /// seconds, so never call it on the UI thread. An empty `cwd` means the program's own. Standard input is empty.
    RunResult run(const QStringList &args, const QString &cwd, std::chrono::duration<double> timeout)
    {
        return run(args, cwd, timeout, {});
    }
    /// The same with an environment of its own.
    virtual RunResult run(const QStringList &args, const QString &cwd, std::chrono::duration<double> timeout,
                          const ToolEnvironment &environment) = 0;
    /// Whether an executable of this name is on the search path that run() gives its tools.
    virtual bool toolInstalled(const QString &name) const = 0;
    /// False if a tool that needs a sign-in is known, without running it, to have none. Any thread; reads a
    /// file.
    virtual bool mayBeSignedIn(const QString &) const { return true; }
};

} // namespace velto
