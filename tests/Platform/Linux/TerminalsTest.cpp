#include "Platform/Linux/LinuxTerminals.h"
#include "Platform/Linux/TerminalCommands.h"
#include "Platform/Posix/FilesTesting.h"
#include "RunTests.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace velto;
using namespace Qt::StringLiterals;

/// A command line reaches the user's shell in a new window of the right terminal, word for word.
class TerminalsTest : public QObject {
    Q_OBJECT
    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_path;

    QString put(const QString &name, const QByteArray &script = "#!/bin/sh\n")
    {
        const QString path = m_folder->filePath(name);
        writeFile(path, script, 0700);
        return path;
    }
    /// A terminal that writes what the script says to the file "seen", and is found.
    void putTeller(const QString &name, const QByteArray &script)
    {
        const QByteArray seen = QFile::encodeName(m_folder->filePath(u"seen"_s));
        put(name, "#!/bin/sh\n" + script + " >" + seen + ".new; mv " + seen + ".new " + seen + "\n");
        qputenv("PATH", QFile::encodeName(m_folder->path()) + ':' + m_path);
    }
    FindExecutable find() const
    {
        return [this](const QString &name) { return QStandardPaths::findExecutable(name, {m_folder->path()}); };
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = qgetenv("PATH");
    }
    void cleanup() { qputenv("PATH", m_path); }

    void styles()
    {
        for (const auto &[terminals, arguments] : {std::pair("gnome-terminal kgx", "-- p:a b"),
                                                   {"konsole xterm ghostty xfce4-terminal.wrapper", "-e p:a b"},
                                                   {"kitty foot", "p:a b"},
                                                   {"xfce4-terminal", "-x p:a b"},
                                                   {"wezterm", "start -- p:a b"},
                                                   {"lxterminal", "-e /tmp/s"},
                                                   {"warp-terminal", "/tmp/s"}}) {
            for (const QString &terminal : QString::fromLatin1(terminals).split(u' '))
                QCOMPARE(terminalArguments(terminalStyle(terminal), {u"p:a b"_s}, u"/tmp/s"_s).join(u' '),
                         QLatin1StringView(arguments));
        }
    }

    void theDesktopsOwnTerminal()
    {
        QVERIFY(!defaultTerminal(find(), u"GNOME"_s, false));
        put(u"foot"_s);
        QVERIFY(!defaultTerminal(find(), {}, false));
        QVERIFY(defaultTerminal(find(), {}, true));
        const auto kitty = put(u"kitty"_s);
        QCOMPARE(defaultTerminal(find(), {}, false)->path, kitty);
        const auto konsole = put(u"konsole"_s);
        put(u"gnome-terminal"_s);
        QCOMPARE(defaultTerminal(find(), u"KDE"_s, false)->path, konsole);
        // The style of an alternative is that of its target.
        const auto alternative = m_folder->filePath(u"x-terminal-emulator"_s);
        QVERIFY(QFile::link(kitty, alternative));
        QCOMPARE(defaultTerminal(find(), u"KDE"_s, false), (TerminalProgram{alternative, TerminalStyle::Plain}));
        const auto standard = put(u"xdg-terminal-exec"_s);
        QCOMPARE(defaultTerminal(find(), u"KDE"_s, false), (TerminalProgram{standard, TerminalStyle::Plain}));
    }

    void theWindowStays()
    {
        for (const auto &shell : {u"sh"_s, u"dash"_s, u"bash"_s, u"zsh"_s, u"fish"_s}) {
            const auto path = QStandardPaths::findExecutable(shell);
            if (shell != u"sh"_s && path.isEmpty())
                continue;
            // The shell that takes over reads further commands, from what stands in for the terminal.
            const auto command = shellCommand(path, u"cd '/' && echo \"first $PWD\" && false"_s);
            QProcess process;
            auto environment = QProcessEnvironment::systemEnvironment();
            environment.insert(u"HOME"_s, m_folder->path());
            process.setProcessEnvironment(environment);
            process.start(command.first(), command.sliced(1));
            QVERIFY2(process.waitForStarted(), qPrintable(shell));
            process.write("echo second $PWD\nexit\n");
            process.closeWriteChannel();
            QVERIFY2(process.waitForFinished(), qPrintable(shell));
            const auto output = process.readAllStandardOutput();
            QVERIFY2(output.contains("first /\n") && output.contains("second /\n"), output.constData());
        }
    }

    void launchesDetached()
    {
        const auto seen = m_folder->filePath(u"seen"_s);
        putTeller(u"ghostty"_s,
                  "{ pwd; printf '%s\\n' \"$#\" \"$1\"; printf '%s|' \"$6\"; echo; ls /proc/self/fd | wc -l; ps -o sid= -p $$; "
                  "echo $$; }");
        LinuxTerminals terminals(Places{m_folder->path(), {}, {}, m_folder->path()});
        QVERIFY(terminals.installed(Terminals::App::Ghostty));
        QVERIFY(!terminals.installed(Terminals::App::ITerm));
        QFile held(u"/etc/passwd"_s);
        QVERIFY(held.open(QIODevice::ReadOnly));
        terminals.launch(Terminals::App::Ghostty, u"cd '/a b' && echo \"it's\""_s);
        QTRY_VERIFY(QFile::exists(seen));
        const auto lines = QString::fromUtf8(readFile(seen)).split(u'\n');
        QCOMPARE(lines.value(0), QDir(m_folder->path()).canonicalPath());
        QCOMPARE(lines.value(2), u"-e"_s);
        QVERIFY2(lines.value(3).startsWith(u"cd '/a b' && echo \"it's\""_s), qPrintable(lines.value(3)));
        // Its three streams, and the folder that ls reads.
        const auto open = lines.indexOf(QRegularExpression(u"^\\d+$"_s), 4);
        QVERIFY(open > 0);
        QCOMPARE(lines.value(open), u"4"_s);
        // In a session of its own, so that none of our terminals can end it.
        QVERIFY(lines.value(open + 1).trimmed() != QString::number(::getsid(0)));
    }

    void scriptForOneWordTerminals()
    {
        const auto seen = m_folder->filePath(u"seen"_s);
        putTeller(u"warp-terminal"_s, "printf %s \"$1\"");
        LinuxTerminals(Places{m_folder->path(), {}, {}, m_folder->path()}).launch(Terminals::App::Warp, u"echo 'é'"_s);
        QTRY_VERIFY(QFile::exists(seen));
        const QString script = QString::fromUtf8(readFile(seen));
        QCOMPARE(modeOf(script), 0700);
        const auto text = readFile(script);
        QVERIFY(text.startsWith("#!/"));
        QVERIFY(text.contains(" -l\necho 'é'\nexec '/"));
        QVERIFY(shellScript(u"/opt/it's/bash"_s, u"true"_s).endsWith("true\nexec '/opt/it'\\''s/bash'\n"));
    }
};

static const Registered<TerminalsTest> kAdded;
#include "TerminalsTest.moc"
