#include "Core/TerminalApp.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Places.h"
#include "RunTests.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace velto;

class TerminalAppTest : public QObject {
    Q_OBJECT

    const QString m_session = u"aefe0d0b-131d-43a7-B83D-daf04de24178"_s;
    FakeDefaults m_defaults;
    FakeTerminals m_terminals;
    QTemporaryDir m_folder;
    Places m_places{m_folder.path(), {}, {}, {}};
    TerminalApp m_terminal{m_defaults, m_terminals, m_places};

private Q_SLOTS:
    void init()
    {
        m_defaults.values.clear();
        m_terminals.present.clear();
        m_terminals.launched.clear();
    }

    void takesTheChosenTerminalOnlyWhileItIsThere()
    {
        QCOMPARE(m_terminal.current(), TerminalApp::App::Terminal);
        m_terminals.present = {TerminalApp::App::Warp, TerminalApp::App::Ghostty};
        QCOMPARE(m_terminal.current(), TerminalApp::App::Ghostty);
        m_terminal.setCurrent(TerminalApp::App::Warp);
        QCOMPARE(m_defaults.value(u"terminalApp"_s).toString(), u"dev.warp.Warp-Stable"_s); // the value in older settings
        QCOMPARE(m_terminal.current(), TerminalApp::App::Warp);
        m_terminals.present = {TerminalApp::App::Ghostty};
        QCOMPARE(m_terminal.current(), TerminalApp::App::Ghostty);
        m_terminals.present.insert(TerminalApp::App::Warp);
        QCOMPARE(m_terminal.current(), TerminalApp::App::Warp);
        m_defaults.set(u"terminalApp"_s, u"no.such.app"_s);
        QCOMPARE(m_terminal.current(), TerminalApp::App::Ghostty);
    }

    void refusesWhatIsNoSessionId()
    {
        for (const QString &bad : {QString(), u"abc"_s, m_session + u'\n', u"x"_s + m_session, m_session.chopped(1) + u';',
                                   m_session.chopped(1) + QChar(0x0663), QString(m_session).replace(u'-', u'0')}) {
            QVERIFY2(!m_terminal.resumeClaude(bad, {}), qPrintable(bad));
        }
        QVERIFY(!m_terminal.resumeClaude({}, {}));
        QVERIFY(m_terminals.launched.isEmpty());
    }

    void fallsBackToHomeWithoutAFolder()
    {
        const QString home = u"cd '%1' && claude --resume %2"_s.arg(m_folder.path(), m_session);
        for (const auto &cwd : {std::optional<QString>(), std::optional(u"/no/such/folder"_s), std::optional(u"."_s),
                                std::optional(u"/etc/passwd"_s), std::optional(QString())}) {
            m_terminals.launched.clear();
            QVERIFY(m_terminal.resumeClaude(m_session, cwd));
            QCOMPARE(m_terminals.launched, (QList<std::pair<TerminalApp::App, QString>>{{TerminalApp::App::Terminal, home}}));
        }
    }

    void aFolderWithAnyNameIsOneWordForTheShell()
    {
        const QString folder = m_folder.path() + u"/it's \"a\" $(touch no) `x`\n; \\ -%1\\'; echo no #"_s;
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(m_terminal.resumeClaude(m_session, folder));
        QString command = m_terminals.launched.front().second;
        command.replace(u"claude --resume "_s, u"pwd #"_s);
        for (const auto &program : {u"sh"_s, u"bash"_s, u"zsh"_s, u"fish"_s}) {
            if (program != u"sh"_s && QStandardPaths::findExecutable(program).isEmpty())
                continue;
            QProcess shell;
            shell.start(program, {u"-c"_s, command});
            QVERIFY2(shell.waitForFinished(), qPrintable(program));
            QCOMPARE(QString::fromUtf8(shell.readAllStandardOutput()), folder + u'\n');
        }
    }
};

static const Registered<TerminalAppTest> registered;
#include "TerminalAppTest.moc"
