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
        // A link is what it leads to.
        pretend(tree, {u"l/app"_s, u"elsewhere/lib"_s});
        for (const auto &[target, link] :
             {std::pair("l/app", "l/a-link"), {"elsewhere/lib", "l/lib"}, {"l", "l/loop"}, {"missing", "l/nowhere"}})
            QVERIFY(QFile::link(tree.path(QLatin1String(target)), tree.path(QLatin1String(link))));
        QCOMPARE(findRepos({tree.path(u"l"_s)}), tree.paths({u"l/app"_s, u"l/lib"_s}));
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
        tree.sh(u"r"_s,
                "commit() { git add .; git commit -qm \"$1\"; }\n"
                "for name in clean detached dirty hangs group/above lib; do\n"
                "  mkdir -p $name; (cd $name; git init -q; echo first >readme; commit first)\n"
                "done\n"
                "git init -q new\n" // no commit yet
                "(cd detached; git checkout -q --detach)\n"
                "(cd dirty; echo text | tee gone >changed; commit second; rm gone; echo other >changed; echo text >untracked\n"
                "  odd=$(printf 'added \\n\"name\"'); echo text >\"$odd\"; git add -- \"$odd\")\n"
                "(cd clean; git worktree add -qb 'työ/<b>' ../group/worktree; echo text >../group/worktree/new)\n"
                "(cd group/above; git submodule --quiet add \"$PWD/../../lib\" sub; commit sub; echo changed >readme)\n"
                "rm -rf lib\n"
                // Two commits ahead of its bare origin and one behind.
                "mkdir origin; cd origin; git clone -q --bare ../clean bare.git\n"
                "for name in clone other; do git clone -q bare.git $name; done\n"
                "(cd other; echo text >theirs; commit theirs; git push -q); rm -rf other\n"
                "(cd clone; for name in a b; do echo text >$name; commit $name; done; git fetch -q)\n"
                "cd ..; git init -q --bare bare\n" // no .git inside
                "git init -q --bare bare-inside/.git\n" // no work tree
                "mkdir broken; echo 'gitdir: nowhere' >broken/.git\n");
    }
};

const Registered<ReadingTest> registered;

} // namespace velto

#include "ReadingTest.moc"
