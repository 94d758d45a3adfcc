#include "FilesTesting.h"
#include "Platform/Posix/PosixToolRunner.h"
#include "Platform/Posix/ToolSearchPath.h"
#include "RunTests.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <csignal>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace velto;

/// Real tools: small shell scripts in folders of their own.
class ToolRunnerTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_first;
    QTemporaryDir m_second;
    std::unique_ptr<PosixToolRunner> m_runner;

    static void script(const QTemporaryDir &folder, const QString &name, const QByteArray &body)
    {
        writeFile(folder.filePath(name), "#!/bin/sh\n" + body, 0700);
    }
    RunResult sh(const QString &code, std::chrono::duration<double> timeout = 20s, const QString &cwd = {})
    {
        return m_runner->run({u"sh"_s, u"-c"_s, code}, cwd, timeout);
    }
    static bool hasEnded(pid_t pid) { return pid > 0 && (::kill(pid, 0) != 0 || !QFile::exists(u"/proc/%1/exe"_s.arg(pid))); }
    QStringList searchPath() const { return {m_first.path(), m_second.path(), u"/usr/bin"_s, u"/bin"_s}; }

    static constexpr auto kLastWords = 500ms;

private Q_SLOTS:
    void initTestCase() { qputenv("VELTO_TEST_VARIABLE", "kept"); }
    void init() { m_runner = std::make_unique<PosixToolRunner>(searchPath(), PosixToolRunner::kMaximumOutput, kLastWords); }

    void searchPathPutsFixedFoldersFirstAndEachOnce()
    {
        const QStringList path = toolSearchPath(u"/home/me"_s, u":/opt/x::/usr/bin:/home/me/.cargo/bin:/opt/x:"_s);
        QCOMPARE(path.size(), 10);
        QCOMPARE(path.front(), u"/home/me/.local/bin"_s);
        QCOMPARE(path.sliced(7), (QStringList{u"/usr/bin"_s, u"/bin"_s, u"/opt/x"_s}));
        QCOMPARE(toolSearchPath(u"/home/me"_s, {}).size(), 9);
    }

    void givesWhatTheToolPrinted()
    {
        const auto large = sh(u"head -c 5000000 /dev/zero | tee /dev/stderr"_s);
        QVERIFY(large.ok);
        QCOMPARE(large.out, QByteArray(5'000'000, '\0'));
        QCOMPARE(large.err.size(), 5'000'000);
        PosixToolRunner small(searchPath(), 1024 * 1024); // a flood ends before the memory does
        const auto flood = small.run({u"cat"_s, u"/dev/zero"_s}, {}, 20s);
        QVERIFY(!flood.ok);
        QCOMPARE(flood.err, u"printed more than 1 MB"_s);
        QVERIFY(flood.out.size() < 2 * 1024 * 1024);

        const auto failed = sh(u"echo kept; printf 'a\\377b' >&2; exit 3"_s);
        QVERIFY(!failed.ok);
        QCOMPARE(failed.out, "kept\n");
        QCOMPARE(failed.err, u"a\uFFFDb"_s); // repaired
        QVERIFY(!sh(u"kill -9 $$"_s).ok);

        QCOMPARE(QString::fromUtf8(sh(u"pwd"_s, 20s, m_first.path()).out), m_first.path() + u'\n');
        const auto nowhere = sh(u"pwd"_s, 20s, u"/no/such/folder"_s);
        QVERIFY(!nowhere.ok);
        QCOMPARE(nowhere.err, u"No such file or directory"_s);
    }

    void theToolStandsInAWorldOfItsOwn()
    {
        const int leaked = ::fcntl(STDERR_FILENO, F_DUPFD, 200); // without close-on-exec
        sigset_t term;
        ::sigemptyset(&term);
        ::sigaddset(&term, SIGTERM);
        ::pthread_sigmask(SIG_BLOCK, &term, nullptr);
        const auto before = ::signal(SIGPIPE, SIG_IGN);
        const auto result = sh(u"read line && echo asked; ls /proc/$$/fd; echo $VELTO_TEST_VARIABLE $PATH"_s);
        // Without a shell, which sets masks of its own while it starts a program.
        const auto masks = m_runner->run({u"sed"_s, u"-n"_s, u"s/Sig[BI][lg][kn]:.//p"_s, u"/proc/self/status"_s}, {}, 20s);
        ::signal(SIGPIPE, before);
        ::pthread_sigmask(SIG_UNBLOCK, &term, nullptr);
        ::close(leaked);
        const QStringList lines = QString::fromUtf8(result.out).split(u'\n');
        QCOMPARE(lines, (QStringList{u"0"_s, u"1"_s, u"2"_s, u"kept "_s + searchPath().join(u':'), QString()}));
        constexpr quint64 kUsualSignals = 0x7fffffff; // those above 31 belong to the C library
        const QList<QByteArray> maskLines = masks.out.trimmed().split('\n');
        QCOMPARE(maskLines.size(), 2);
        for (const QByteArray &mask : maskLines) {
            bool isNumber = false;
            QCOMPARE(mask.toULongLong(&isNumber, 16) & kUsualSignals, 0U);
            QVERIFY(isNumber);
        }
    }

    void findsToolsAlongTheSearchPath()
    {
        script(m_first, u"both"_s, "echo first");
        script(m_second, u"both"_s, "echo second");
        script(m_second, u"only"_s, "echo only");
        QVERIFY(QDir(m_first.path()).mkdir(u"only"_s)); // a folder isn't a tool
        writeFile(m_first.filePath(u"plain"_s), {});
        QCOMPARE(m_runner->run({u"both"_s}, {}, 20s).out, "first\n");
        QCOMPARE(m_runner->run({u"only"_s}, {}, 20s).out, "only\n");
        QVERIFY(m_runner->toolInstalled(u"only"_s));
        QVERIFY(!m_runner->toolInstalled(u"plain"_s));
        QVERIFY(!m_runner->toolInstalled(u"absent"_s));
        const auto absent = m_runner->run({u"absent"_s}, {}, 20s);
        QVERIFY(!absent.ok);
        QVERIFY2(absent.err.contains(u"absent"_s), qPrintable(absent.err));
    }

    /// Judged by what the GitHub CLI leaves on the disk, which saves running it.
    void knowsWhetherSomebodyMayBeSignedInToGitHub()
    {
        const QString hosts = m_first.filePath(u"hosts.yml"_s);
        const auto possible = [](const QByteArray &folder) {
            qputenv("GH_CONFIG_DIR", folder);
            return PosixToolRunner({QString::fromLocal8Bit(folder)}).mayBeSignedIn(u"gh"_s);
        };
        const QByteArray folder = m_first.path().toLocal8Bit();
        QVERIFY(QFile::copy(u"/bin/true"_s, m_first.filePath(u"gh"_s)));
        QVERIFY(!possible(folder));
        writeFile(hosts, "{}\n"); // after a `gh auth logout`
        QVERIFY(!possible(folder));
        qputenv("GH_TOKEN", "secret");
        QVERIFY(possible(folder));
        qunsetenv("GH_TOKEN");
        writeFile(hosts, "github.com:\n    user: me\n");
        QVERIFY(possible(folder));
        // Another program in the CLI's place may keep its files elsewhere.
        script(m_second, u"gh"_s, "exit 0");
        QVERIFY(possible(m_second.path().toLocal8Bit()));
        qunsetenv("GH_CONFIG_DIR");
    }

    void asksALateToolToEndAndHearsItsLastWords()
    {
        const auto result = sh(u"trap 'echo bye; exit 0' TERM; echo hi; echo no >&2; while :; do sleep 0.02; done"_s, 300ms);
        QVERIFY(!result.ok);
        QCOMPARE(result.out, "hi\nbye\n");
        QCOMPARE(result.err, u"timed out after 0 s"_s);
    }

    void aGrandchildThatHoldsThePipeIsNotWaitedForAndEnds()
    {
        QElapsedTimer timer;
        timer.start();
        const auto result = sh(u"sleep 20 & echo hi; echo $!"_s, 300ms);
        QVERIFY(!result.ok);
        QVERIFY(result.out.startsWith("hi\n"));
        QVERIFY(timer.elapsed() < 10'000);
        QTRY_VERIFY(hasEnded(pid_t(result.out.trimmed().split('\n').last().toInt())));
    }

    void aStubbornToolIsLeftAloneAndReapedLater()
    {
        const auto result = sh(u"trap '' TERM; echo $$; exec sleep 20"_s, 200ms);
        QCOMPARE(result.err, u"timed out after 0 s"_s);
        const pid_t pid = pid_t(result.out.trimmed().toInt());
        QVERIFY(pid > 0);
        QCOMPARE(::kill(pid, 0), 0);
        ::kill(pid, SIGKILL);
        // Gone from the process table, not left there as a zombie.
        QTRY_VERIFY(sh(u":"_s).ok && ::kill(pid, 0) != 0);
    }

    void aToolThatClosesItsStreamsIsWaitedFor()
    {
        QVERIFY(!sh(u"exec >&- 2>&-; sleep 0.2; exit 1"_s).ok);
        QVERIFY(sh(u"exec >&- 2>&-; sleep 0.2"_s, 50ms).ok); // it gets the same time to end as one that is asked to
        QCOMPARE(sh(u"exec >&- 2>&-; exec sleep 20"_s, 100ms).err, u"timed out after 0 s"_s);
    }

    void stopGivesUpWhatIsUnderWay()
    {
        QElapsedTimer timer;
        timer.start();
        std::vector<std::thread> threads;
        const char *const stubborn = "trap '' TERM; sleep 20 & echo $! >c; wait; sleep 20";
        for (const char *code : {"touch a; exec sleep 20", "touch b; exec >&- 2>&-; exec sleep 20", stubborn}) {
            threads.emplace_back([this, code] { QVERIFY(!sh(QString::fromLatin1(code), 20s, m_first.path()).ok); });
        }
        QTRY_VERIFY(QFile::exists(m_first.filePath(u"a"_s)) && QFile::exists(m_first.filePath(u"b"_s))
                    && readFile(m_first.filePath(u"c"_s)).endsWith('\n'));
        const pid_t grandchild = pid_t(readFile(m_first.filePath(u"c"_s)).trimmed().toInt());
        m_runner->stop();
        for (std::thread &thread : threads)
            thread.join();
        QVERIFY(timer.elapsed() < 15'000);
        QTRY_VERIFY(hasEnded(grandchild));
        QVERIFY(!sh(u"touch d"_s, 20s, m_first.path()).ok);
        QVERIFY(!QFile::exists(m_first.filePath(u"d"_s)));
    }
};

static const Registered<ToolRunnerTest> registered;
#include "ToolRunnerTest.moc"
