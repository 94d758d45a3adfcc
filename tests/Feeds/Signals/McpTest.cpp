#include "Feeds/Servers/McpHealth.h"
#include "Fixture.h"
#include "Platform/Fake/FakeToolRunner.h"
#include "RunTests.h"

namespace velto {

using namespace Qt::StringLiterals;

/// What is read from Claude Code's listing of MCP servers.
class McpTest : public QObject {
    Q_OBJECT

    /// "name|status|detail", one per line.
    static QString shown(const QList<MCPServer> &servers)
    {
        QStringList lines;
        for (const MCPServer &server : servers)
            lines.append(server.name + u'|' + server.status + u'|' + server.detail);
        return lines.join(u'\n');
    }

private Q_SLOTS:
    void readsALine()
    {
        const auto row = [](const char *line, const char *server) {
            QCOMPARE(shown(parseServers(line)), QString::fromUtf8(server));
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
        QCOMPARE(shown(parseServers(fixture("mcp/servers.txt"))),
                 u"shared|failed|http://mcp.example.com/ok/mcp (HTTP)\nworks|ok|http://mcp.example.com/ok/mcp (HTTP)\n"
                 "login|auth|http://mcp.example.com/auth/mcp (HTTP)\nbroken|failed|http://mcp.example.com/fail/mcp (HTTP)\n"
                 "hangs|failed|http://mcp.example.com/hang/mcp (HTTP)\nwith-args|ok|node /home/me/mock-mcp.js --stdio\n"
                 "missing|failed|no-such-command-here -x a: b"_s);
        QCOMPARE(parseServers(fixture("mcp/none.txt")), {});
        const auto odd = parseServers(fixture("mcp/diagnostics.txt")); // a command with a line break, and text after the servers
        QCOMPARE(odd.size(), 6);
        QCOMPARE(odd.last().name, u"events"_s);
    }
    void saysWhyNothingIsKnown()
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
        row({false, one, late}, 1, {}); // if there is a listing, it doesn't matter
        row({true, fixture("mcp/none.txt"), {}}, 0, {});
        row({false, {}, late}, 0, late);
        row({false, "Checking\n", u"\n\n"_s}, 0, u"no output"_s);
        row({false, {}, QString::fromUtf8(fixture("mcp/corrupt.err"))}, 0,
            uR"(You can manually restore it by running: cp )"
            uR"("/home/me/.claude/backups/.claude.json.backup.1795247620288" "/home/me/.claude.json")"_s);
    }
};

const Registered<McpTest> registered;

} // namespace velto

#include "McpTest.moc"
