#include "Feeds/Repositories/RepoState.h"
#include "Feeds/Servers/McpHealth.h"
#include "Feeds/Signals/RepoTree.h"
#include "Fixture.h"
#include "Platform/Fake/FakeToolRunner.h"
#include "RunTests.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

/// Which repositories are found and what isn't committed or pushed in them, and what is read from the listing of MCP servers.
class ReadingTest : public QObject {
    Q_OBJECT

    /// The branch and the counts as text.
    static QString shown(const RepoState &repo)
    {
        return u"%1 %2 %3 %4"_s.arg(repo.branch).arg(repo.dirty).arg(repo.ahead).arg(repo.behind);
    }
    /// Folders that only look like repositories.
    static void pretend(const RepoTree &tree, const QStringList &names)
    {
        for (const QString &name : names)
            QVERIFY(QDir().mkpath(tree.path(name + u"/.git"_s)));
    }
    /// "name|status|detail", one a line.
    static QString serversShown(const QList<MCPServer> &servers)
    {
        QStringList lines;
        for (const MCPServer &server : servers)
            lines.append(server.name + u'|' + server.status + u'|' + server.detail);
        return lines.join(u'\n');
    }

private Q_SLOTS:
    void readsWhatGitPrints()
    {
        const auto row = [](const char *printed, const char *state) {
            const RepoState repo = parseStatus(u"/home/me/src/app"_s, printed);
            QCOMPARE(shown(repo), QString::fromUtf8(state));
            QCOMPARE(repo.name, u"app"_s);
        };
        row("", "? 0 0 0");
        row("# branch.oid 12\n# branch.head main\n# branch.upstream origin/main\n# branch.ab +2 -4\n", "main 0 2 4");
        row("# branch.head (detached)\n\n? new\n1 .M x\n2 R. a\tb\nu UU c\n", "(detached) 4 0 0");
        row("# branch.head a b \xff\n! ignored\n", "a b \xEF\xBF\xBD 1 0 0");
        row("# branch.ab  +3   -1  x", "? 0 3 1");
        row("# branch.ab +? -?\n# branch.ahead +9 -9\n#", "? 0 0 0");
        row("# branch.ab +7", "? 0 7 0");
        row("# branch.ab +99999999999999999999 -1", "? 0 0 1");
        row(" # branch.head x\n# branch.headx\n", "? 1 0 0");
        QCOMPARE((RepoState{{}, {}, {}, 3, 2, 4}.summary()), u"3 changed · 2 to push"_s);
        QVERIFY(!(RepoState{{}, {}, {}, 0, 0, 4}.needsWork()));
    }
    void findsThemThreeLevelsDown()
    {
        const RepoTree tree;
        pretend(tree,
                {u"r/_archive/a"_s, u"r/.cache/a"_s, u"r/b"_s, u"r/b/inside"_s, u"r/c/d"_s, u"r/c/d/module"_s,
                 u"r/c/d/module/deep"_s, u"r/c/e/f"_s, u"r/c/e/f/deep"_s, u"r/c/_g"_s, u"r/c/x \n\"$(touch pwned)\" <b>"_s,
                 u"one"_s, u"one/two"_s});
        tree.write(u"r/worktree/.git"_s, "gitdir: elsewhere\n"); // a file
        tree.write(u"r/file"_s, "");
        const QStringList below = tree.paths(
            {u"r/b"_s, u"r/c/d"_s, u"r/c/d/module"_s, u"r/c/e/f"_s, u"r/c/x \n\"$(touch pwned)\" <b>"_s, u"r/worktree"_s});
        QCOMPARE(findRepos({tree.path(u"r"_s)}), below);
        QCOMPARE(findRepos({tree.path(u"r/c/d"_s)}), tree.paths({u"r/c/d"_s})); // the search doesn't go inside
        QCOMPARE(findRepos(tree.paths({u"one"_s, u"r"_s, u"r/"_s, u"r/c/../c"_s, u"missing"_s, u"r/file"_s}) + QStringList{{}}),
                 tree.paths({u"one"_s}) + below.first(4) + tree.paths({u"r/c/e/f/deep"_s}) + below.sliced(4));
    }
    void takesALinkForWhatItLeadsTo()
    {
        const RepoTree tree;
        pretend(tree, {u"r/app"_s, u"elsewhere/lib"_s});
        QVERIFY(QFile::link(tree.path(u"r/app"_s), tree.path(u"r/a-link"_s)));
        QVERIFY(QFile::link(tree.path(u"elsewhere/lib"_s), tree.path(u"r/lib"_s)));
        QVERIFY(QFile::link(tree.path(u"r"_s), tree.path(u"r/loop"_s)));
        QVERIFY(QFile::link(u"missing"_s, tree.path(u"r/nowhere"_s)));
        QCOMPARE(findRepos({tree.path(u"r"_s)}), tree.paths({u"r/app"_s, u"r/lib"_s}));
    }

    void readsRealOnes()
    {
        if (RepoTree::realGit().isEmpty())
            QSKIP("git isn't installed");
        RepoTree tree;
        makeEveryKind(tree);
        const auto states = repoStates(tree, {tree.path(u"r"_s)});
        QStringList read;
        for (const RepoState &repo : states)
            read.append(repo.path.sliced(tree.path(u"r/"_s).size()) + u": "_s + shown(repo) + u' ' + repo.summary());
        QCOMPARE(read,
                 QStringList({u"clean: main 0 0 0 "_s, u"detached: (detached) 0 0 0 "_s, u"dirty: main 4 0 0 4 changed"_s,
                              u"group/above: main 1 0 0 1 changed"_s, u"group/above/sub: main 0 0 0 "_s,
                              u"group/worktree: työ/<b> 1 0 0 1 changed"_s, u"new: main 0 0 0 "_s,
                              u"origin/clone: main 0 2 1 2 to push"_s}));
        QVERIFY(tree.ran.contains(tree.path(u"r/hangs"_s)));
        QVERIFY(std::ranges::all_of(tree.limits, [](double limit) { return limit == 10; }));
    }
    void readsTheFirst200()
    {
        const RepoTree tree;
        FakeToolRunner tools;
        for (int i = 0; i <= 200; ++i) {
            const QString name = u"r/%1"_s.arg(i, 3, 10, QChar(u'0'));
            pretend(tree, {name});
            for (const char *words :
                 {"config --list --show-scope --null", "ls-files --stage --full-name -z -- :/", "status --porcelain=v2 --branch"})
                tools.answers.insert(u"git -C %1 %2"_s.arg(tree.path(name), QLatin1StringView(words)), {true, {}, {}});
        }
        const auto states = repoStates(tools, {tree.path(u"r"_s)});
        QCOMPARE(states.size(), 200);
        QCOMPARE(states.last().name, u"199"_s);
        tools.ran.clear();
        QCOMPARE(repoStates(tools, {tree.path(u"r"_s)}, [&tools](const QString &) { return tools.ran.size() < 15; }).size(), 5);
    }

    void readsALineAboutAServer()
    {
        const auto row = [](const char *line, const char *server) {
            QCOMPARE(serversShown(parseServers(line)), QString::fromUtf8(server));
        };
        row("name: npx server - ✔ Connected", "name|ok|npx server");
        row("name: x - ✓ Connected", "name|failed|x"); // another mark
        row("name: x - ! Needs AUTHentication", "name|auth|x");
        row("name: x - ✔ Authenticated", "name|ok|x"); // the mark decides
        row("name: x - ", "name|failed|x");
        row("name:  - ✔", "name|ok|");
        row("a - b: c: d - e - ✔", "a - b|ok|c: d");
        row("auth: auth - ✘ Failed", "auth|failed|auth");
        row("name:x - ✔", "");
        row("name: x -✔", "");
        row("x - y: ✔", "");
        row("\n\nname: x - ✔\r\n", "name|ok|x");
        row("<b>n</b>: \xff\xc3 - ✔", "<b>n</b>|ok|\xEF\xBF\xBD\xEF\xBF\xBD");
    }
    void readsWhatClaudeCodePrints()
    {
        QCOMPARE(serversShown(parseServers(fixture("mcp/servers.txt"))),
                 u"shared|failed|http://mcp.example.com/ok/mcp (HTTP)\nworks|ok|http://mcp.example.com/ok/mcp (HTTP)\n"
                 "login|auth|http://mcp.example.com/auth/mcp (HTTP)\nbroken|failed|http://mcp.example.com/fail/mcp (HTTP)\n"
                 "hangs|failed|http://mcp.example.com/hang/mcp (HTTP)\nwith-args|ok|node /home/me/mock-mcp.js --stdio\n"
                 "missing|failed|no-such-command-here -x a: b"_s);
        QCOMPARE(parseServers(fixture("mcp/none.txt")), {});
        const auto odd = parseServers(fixture("mcp/diagnostics.txt")); // a command with a line end, and what follows the servers
        QCOMPARE(odd.size(), 6);
        QCOMPARE(odd.last().name, u"events"_s);
    }
    void saysWhyNothingIsKnownOfServers()
    {
        const auto row = [](const RunResult &result, qsizetype servers, const QString &why) {
            FakeToolRunner tools;
            tools.answers.insert(u"claude mcp list"_s, result);
            const MCPHealth health = mcpHealth(tools);
            QCOMPARE(health.servers.size(), servers);
            QCOMPARE(health.error.value_or(QString()),
                     why.isEmpty() ? QString() : u"Couldn't check MCP servers (claude mcp list: %1)."_s.arg(why));
        };
        const QByteArray one = "a: b - ✔ Connected\n";
        const QString late = u"timed out after 60 s"_s;
        row({true, one, u"a warning"_s}, 1, {});
        row({false, one, late}, 1, {}); // with a listing it doesn't matter
        row({true, fixture("mcp/none.txt"), {}}, 0, {});
        row({false, {}, late}, 0, late);
        row({false, "Checking\n", u"\n\n"_s}, 0, u"no output"_s);
        row({false, {}, QString::fromUtf8(fixture("mcp/corrupt.err"))}, 0,
            uR"(You can manually restore it by running: cp )"
            uR"("/home/me/.claude/backups/.claude.json.backup.1795247620288" "/home/me/.claude.json")"_s);
    }

private:
    static void makeEveryKind(RepoTree &tree)
    {
        for (const char *name : {"clean", "detached", "dirty", "hangs", "group/above", "lib"})
            tree.make(u"r/"_s + QLatin1StringView(name));
        tree.git(u"r/detached"_s, {u"checkout"_s, u"-q"_s, u"--detach"_s});
        tree.git(u"r/new"_s, {u"init"_s, u"-q"_s}); // no commit yet

        for (const char *name : {"gone", "changed"})
            tree.write(u"r/dirty/"_s + QLatin1StringView(name), "text\n");
        tree.git(u"r/dirty"_s, {u"add"_s, u"."_s});
        tree.git(u"r/dirty"_s, {u"commit"_s, u"-qm"_s, u"second"_s});
        tree.write(u"r/dirty/changed"_s, "other\n");
        tree.write(u"r/dirty/added \n\"name\""_s, "text\n");
        tree.git(u"r/dirty"_s, {u"add"_s, u"--"_s, u"added \n\"name\""_s});
        tree.write(u"r/dirty/untracked"_s, "text\n");
        QVERIFY(QFile::remove(tree.path(u"r/dirty/gone"_s)));

        tree.git(u"r/clean"_s, {u"worktree"_s, u"add"_s, u"-qb"_s, u"työ/<b>"_s, tree.path(u"r/group/worktree"_s)});
        tree.write(u"r/group/worktree/new"_s, "text\n");
        tree.git(u"r/group/above"_s, {u"submodule"_s, u"--quiet"_s, u"add"_s, tree.path(u"r/lib"_s), u"sub"_s});
        tree.git(u"r/group/above"_s, {u"commit"_s, u"-qm"_s, u"sub"_s});
        tree.write(u"r/group/above/readme"_s, "changed\n");
        QVERIFY(QDir(tree.path(u"r/lib"_s)).removeRecursively());
        makeClone(tree);

        tree.git(u"r/bare"_s, {u"init"_s, u"-q"_s, u"--bare"_s, u"."_s}); // no .git inside
        tree.git(u"r/bare-inside/.git"_s, {u"init"_s, u"-q"_s, u"--bare"_s, u"."_s}); // no work tree
        tree.write(u"r/broken/.git"_s, "gitdir: nowhere\n");
    }
    /// Two commits ahead of its bare origin and one behind.
    static void makeClone(RepoTree &tree)
    {
        tree.git(u"r/origin"_s, {u"clone"_s, u"-q"_s, u"--bare"_s, tree.path(u"r/clean"_s), u"bare.git"_s});
        for (const char *name : {"clone", "other"})
            tree.git(u"r/origin"_s, {u"clone"_s, u"-q"_s, u"bare.git"_s, QString::fromLatin1(name)});
        const auto commit = [&tree](const QString &folder, const QString &file) {
            tree.write(folder + u'/' + file, "text\n");
            tree.git(folder, {u"add"_s, u"."_s});
            tree.git(folder, {u"commit"_s, u"-qm"_s, file});
        };
        commit(u"r/origin/other"_s, u"theirs"_s);
        tree.git(u"r/origin/other"_s, {u"push"_s, u"-q"_s});
        QVERIFY(QDir(tree.path(u"r/origin/other"_s)).removeRecursively());
        commit(u"r/origin/clone"_s, u"a"_s);
        commit(u"r/origin/clone"_s, u"b"_s);
        tree.git(u"r/origin/clone"_s, {u"fetch"_s, u"-q"_s});
    }
};

const Registered<ReadingTest> registered;

} // namespace velto

#include "ReadingTest.moc"
