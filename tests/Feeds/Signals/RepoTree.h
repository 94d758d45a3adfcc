#pragma once

#include "Platform/Posix/FilesTesting.h"
#include "Platform/Posix/PosixToolRunner.h"

#include <QStandardPaths>
#include <QTemporaryDir>

namespace velto {

using namespace Qt::StringLiterals;

/// Folders with repositories, made by the real git with none of the user's settings. Tools run without a time limit, except for
/// a git that is told to hang.
class RepoTree final : public ToolRunner {
public:
    RepoTree()
    {
        for (const QByteArray &name : QProcessEnvironment::systemEnvironment().keys().join(u' ').toLatin1().split(' ')) {
            if (name.startsWith("GIT_"))
                qunsetenv(name.constData());
        }
        qputenv("HOME", m_folder.path().toUtf8());
        qputenv("GIT_CONFIG_NOSYSTEM", "1");
        qputenv("GIT_CONFIG_GLOBAL", QFile::encodeName(path(u"gitconfig"_s)));
        write(u"gitconfig"_s,
              "[user]\n\tname = Sam\n\temail = sam@acme.example\n[init]\n\tdefaultBranch = main\n"
              "[protocol \"file\"]\n\tallow = always\n");
        // Precedes the real one on the search path.
        write(u"bin/git"_s,
              "#!/bin/sh\ncase \"$2\" in */hangs) exec sleep 60 ;; *) exec " + QFile::encodeName(realGit()) + " \"$@\" ;; esac\n",
              0700);
        m_tools = std::make_unique<PosixToolRunner>(QStringList{path(u"bin"_s), u"/usr/bin"_s, u"/bin"_s});
    }

    static QString realGit() { return QStandardPaths::findExecutable(u"git"_s); }
    QString path(const QString &name = {}) const { return name.isEmpty() ? m_folder.path() : m_folder.filePath(name); }
    QStringList paths(const QStringList &names) const
    {
        QStringList result;
        for (const QString &name : names)
            result.append(path(name));
        return result;
    }

    void write(const QString &name, const QByteArray &text, mode_t mode = 0600) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        writeFile(path(name), text, mode);
    }
    /// Runs a shell script in a folder.
    void sh(const QString &folder, const QByteArray &script)
    {
        QDir().mkpath(path(folder));
        const RunResult result =
            m_tools->run({u"sh"_s, u"-c"_s, QString::fromUtf8("set -e\n" + script)}, path(folder), std::chrono::seconds(30));
        QVERIFY2(result.ok, qPrintable(result.err));
    }

    using ToolRunner::run;
    RunResult run(const QStringList &args, const QString &cwd, std::chrono::duration<double> timeout,
                  const ToolEnvironment &environment) override
    {
        limits.append(timeout.count());
        ran.append(args.value(2));
        const bool hangs = args.value(2).endsWith("/hangs"_L1);
        return m_tools->run(args, cwd, hangs ? std::chrono::duration<double>(0.2) : timeout, environment);
    }
    bool toolInstalled(const QString &name) const override { return m_tools->toolInstalled(name); }

    QList<double> limits; ///< of each run, in seconds
    QStringList ran; ///< the folder of each run

private:
    QTemporaryDir m_folder;
    std::unique_ptr<PosixToolRunner> m_tools;
};

} // namespace velto
