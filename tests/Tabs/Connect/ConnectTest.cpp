#include "RunTests.h"
#include "World.h"

#include "Feeds/Calendar/GoogleCalendar.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

struct Desk : World {
    ConnectSource &tab = connectTab;

    Desk()
    {
        prefs.set(Prefs::Module::Mcp, true);
        background.finishAll();
    }

    /// Makes `claude mcp list` print this from now on, and reads it.
    void setServers(const QByteArray &lines)
    {
        tools.answers.insert(u"claude mcp list"_s, {true, lines, {}});
        hub.refresh(true);
        background.finishAll();
    }
    /// "text", "text [action]" or, for a state other than ready, "! text [action]".
    QString tile(Prefs::Module module)
    {
        for (auto *model : {tab.work(), tab.context(), tab.utilities()}) {
            for (const RowModel::Row &row : static_cast<RowModel *>(model)->rows()) {
                if (row[0] != Prefs::rawValue(module))
                    continue;
                const QString action = row[6].toString();
                return (row[5].toBool() ? u""_s : u"! "_s) + row[4].toString()
                    + (action.isEmpty() ? u""_s : u" [%1]"_s.arg(action));
            }
        }
        return {};
    }
    QStringList launchedLines()
    {
        QStringList lines;
        for (const auto &[app, line] : terminals.launched)
            lines.append(line);
        return lines;
    }
};

/// The words into which a shell splits a command line.
QStringList wordsOf(const QString &line)
{
    QProcess shell;
    shell.start(u"sh"_s, {u"-c"_s, u"claude() { printf '%s\\0' \"$@\"; }; "_s + line});
    if (!shell.waitForFinished(5000) || shell.exitCode() != 0 || !shell.readAllStandardError().isEmpty())
        return {u"the shell didn't take it"_s};
    QStringList words = QString::fromUtf8(shell.readAllStandardOutput()).split(QChar(u'\0'));
    words.removeLast();
    return words;
}

} // namespace

class ConnectTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void hostileNamesStayOneWordOfTheCommandLine()
    {
        for (const QString &name :
             {u"it's 'quoted''"_s, u"say \"hi\"\\"_s, u"a\nrm -rf b"_s, u"$(touch x) ${HOME} $HOME"_s, u"`touch x`"_s,
              u"<b>&amp;</b><img src=x>"_s, u"a; b & c | d > e # f * ? !"_s, u"%1 %2 %s"_s}) {
            Desk d;
            const QString url = u"https://mcp.example.com/'$(id)"_s;
            d.tab.mcp()->setName(u"  "_s + name + u" "_s);
            d.tab.mcp()->setUrl(url);
            QVERIFY(d.tab.mcp()->canAdd());
            d.tab.mcp()->add();
            QCOMPARE(wordsOf(d.launchedLines().value(0)),
                     QStringList({u"mcp"_s, u"add"_s, u"--transport"_s, u"http"_s, name, url}));
            QVERIFY(d.tab.mcp()->name().isEmpty());

            if (name.contains(u'\n'))
                continue; // not a line of a listing
            d.setServers((name + u": https://a.example/mcp - ! Needs authentication\n"_s).toUtf8());
            d.tab.mcp()->act(name);
            d.setServers((name + u": https://a.example/mcp - ✘ Failed to connect\n"_s).toUtf8());
            d.tab.mcp()->act(name);
            QCOMPARE(wordsOf(d.launchedLines().value(1)), QStringList({u"mcp"_s, u"login"_s, name}));
            QCOMPARE(wordsOf(d.launchedLines().value(2)), QStringList({u"mcp"_s, u"get"_s, name}));
            d.tab.mcp()->copyEndpoint(name);
            QCOMPARE(d.clipboard.content, u"https://a.example/mcp"_s);
        }
    }

    void onlyAnHttpsAddressIsAdded()
    {
        for (const auto &[name, url, taken] : std::initializer_list<std::tuple<QString, QString, bool>>{
                 {u"a"_s, u" https://a.example/mcp "_s, true},
                 {u"a"_s, u"HTTPS://a.example"_s, true},
                 {u" "_s, u"https://a.example"_s, false},
                 {u"a"_s, u"http://a.example"_s, false},
                 {u"a"_s, u"javascript:alert(1)"_s, false},
                 {u"a"_s, u"a.example"_s, false},
                 {u"a"_s, u"https:///mcp"_s, false},
                 {u"a"_s, u"https://a.example/\nhttps://b.example/"_s, false}}) {
            Desk d;
            d.tab.mcp()->setName(name);
            d.tab.mcp()->setUrl(url);
            QCOMPARE(d.tab.mcp()->canAdd(), taken);
            QCOMPARE(d.tab.mcp()->problem().isEmpty(), taken || url.isEmpty());
            d.tab.mcp()->add();
            QCOMPARE(d.launchedLines().size(), taken ? 1 : 0);
        }
    }

    void aTileTellsHowItsModuleIsDoing()
    {
        using Module = Prefs::Module;
        Desk d;
        d.setServers({});
        QCOMPARE(d.tile(Module::Agents), u"! Connect for instant alerts and Allow/Deny from the velto. [Connect]"_s);
        QCOMPARE(d.tile(Module::Calendar), u"! Add a meeting yourself. No Mac Calendar access. [Set up]"_s);
        QCOMPARE(d.tile(Module::Prs), u"! Install the GitHub CLI, then sign in. [Copy install command]"_s);
        QCOMPARE(d.tile(Module::Work), u"! Paste a Linear, Jira or Slack token. [Manage]"_s);
        QCOMPARE(d.tile(Module::Usage), u"Read from Claude Code on this Mac."_s);
        QCOMPARE(d.tile(Module::Repos), u"! Choose the folders you keep code in. [Add folder]"_s);
        d.setServers("a: https://a.example - ✔ Connected\nb: https://b.example - ! Needs authentication\n");
        QCOMPARE(d.tile(Module::Mcp), u"! 1 need sign-in. [Set up]"_s);
        d.setServers("a: https://a.example - ✘ Failed to connect\nb: https://b.example - ! Needs authentication\n");
        QCOMPARE(d.tile(Module::Mcp), u"! 1 failed · open to diagnose. [Set up]"_s);
        d.tab.act(u"mcp"_s);
        QVERIFY(d.tile(Module::Mcp).endsWith(u"[Hide]"_s));
        d.tab.act(u"prs"_s);
        QCOMPARE(d.clipboard.content, u"brew install gh && gh auth login"_s);

        d.tools.installed.remove(u"claude"_s);
        d.tab.worldChanged();
        QCOMPARE(d.tile(Module::Agents), u"! Claude Code isn't installed. The scan still finds Codex, Cursor and Ollama."_s);
        QCOMPARE(d.tile(Module::Mcp), u"! Needs Claude Code."_s);
    }

    void aMeetingIsSavedOnceItsTimeCanBeRead()
    {
        Desk d;
        CalendarForm &form = *d.tab.calendar();
        d.tab.act(u"calendar"_s);
        form.setProperty("title", u"<b>Plan</b>\n$(id)"_s);
        form.setProperty("link", u"https://meet.example.com/x"_s);
        form.setTime(u"soon"_s);
        form.save();
        QVERIFY(form.timeUnreadable());
        QVERIFY(d.prefs.meetingTitle().isEmpty());
        for (const auto &[typed, time] : {std::pair(u"16:05"_s, QTime(16, 5)), std::pair(u"4.05"_s, QTime(4, 5)),
                                          std::pair(u"9"_s, QTime(9, 0)), std::pair(u"4:05 pm"_s, QTime(16, 5))}) {
            form.setTime(typed);
            form.save();
            QCOMPARE(d.prefs.meetingStart().toLocalTime().time(), time);
        }
        QCOMPARE(form.doneText(), u"Saved."_s);
        QVERIFY(d.prefs.isOn(Prefs::Module::Calendar));
        QVERIFY(d.tile(Prefs::Module::Calendar).startsWith(u"Added by you · "_s));
        QVERIFY(d.tile(Prefs::Module::Calendar).endsWith(u"[Done]"_s));
        d.prefs.setMeetingTitle(u"  "_s);
        d.tab.worldChanged();
        QCOMPARE(d.tile(Prefs::Module::Calendar), u"! Add a meeting yourself. No Mac Calendar access. [Done]"_s);
    }

    void foldersAreAddedOnceAndThePanelMakesWay()
    {
        Desk d;
        d.folderPanel.answer = {u"/home/me/src/"_s, u"/home/me/it's"_s, u"/home/me/src"_s};
        const QSignalSpy away(&d.tab, &ConnectSource::otherWindowWanted);
        d.tab.act(u"repos"_s);
        QCOMPARE(away.count(), 1);
        QCOMPARE(d.folderPanel.promptNow, u"Watch"_s);
        QCOMPARE(d.prefs.repoRoots(), QStringList({u"/home/me/src"_s, u"/home/me/it's"_s}));
        QVERIFY(d.prefs.isOn(Prefs::Module::Repos));
        QCOMPARE(d.tile(Prefs::Module::Repos), u"2 folders watched. [Add folder]"_s);
    }

    void aFollowUpOpensAsATodoOfSales()
    {
        Desk d;
        d.tab.addFollowUp();
        QCOMPARE(d.hub.selected(), Tab::Todos);
        QVERIFY(d.todos.draft());
        QCOMPARE(d.todos.draft()->project, u"Sales outreach"_s);
        d.tab.connectSales(u"Gmail drafts"_s);
        QVERIFY(d.tab.mcpFormOpen());
        QCOMPARE(d.tab.mcp()->name(), u"gmail"_s);
    }
};

} // namespace velto

QTEST_GUILESS_MAIN(velto::ConnectTest)
#include "ConnectTest.moc"
