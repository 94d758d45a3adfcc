#pragma once

#include "Platform/ToolRunner.h"

#include <QHash>
#include <QSet>
#include <functional>

namespace velto {

/// Answers for outside tools as a test told it to; anything else is a tool that isn't there.
class FakeToolRunner final : public ToolRunner {
public:
    QSet<QString> installed;
    /// By the arguments joined with blanks.
    QHash<QString, RunResult> answers;
    /// What was run, in order.
    QStringList ran;
    std::function<void(const QString &line)> onRun;

    using ToolRunner::run;
    RunResult run(const QStringList &args, const QString &, std::chrono::duration<double>, const ToolEnvironment &) override
    {
        const QString line = args.join(QLatin1Char(' '));
        ran.append(line);
        if (onRun)
            onRun(line);
        return answers.value(line, {false, {}, QStringLiteral("env: '%1': No such file or directory").arg(args.value(0))});
    }
    bool toolInstalled(const QString &name) const override { return installed.contains(name); }
};

} // namespace velto
