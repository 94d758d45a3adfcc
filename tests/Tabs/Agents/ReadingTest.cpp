#include "Platform/Fake/FakeToolRunner.h"
#include "RunTests.h"
#include "Tabs/Agents/Desk.h"
#include "Tabs/Agents/ToolProcess.h"

using namespace Qt::StringLiterals;
using namespace velto;

/// What is read of what Claude Code lists, and of the processes of other tools.
class ReadingTest : public QObject {
    Q_OBJECT

    static std::optional<QList<Agent>> load(const QByteArray &listing, const FakeFiles &files = FakeFiles())
    {
        FakeToolRunner tools;
        tools.answers.insert(u"claude agents --json"_s, {true, listing, {}});
        return loadAgents(tools, files, u"/home/me"_s);
    }
    static QStringList ids(const std::optional<QList<Agent>> &agents)
    {
        QStringList result;
        for (const Agent &agent : agents.value_or(QList<Agent>{}))
            result.append(agent.id + u':' + agent.state);
        return result;
    }
    static QList<ToolProcess> scan(const QByteArray &table, const QByteArray &models = {}, bool ok = true)
    {
        FakeToolRunner tools;
        tools.answers.insert(u"ps -axo etime=,args="_s, {ok, table, {}});
        tools.answers.insert(u"ollama ps"_s, {ok, models, {}});
        return scanTools(tools);
    }

private Q_SLOTS:
    void readsWhatClaudeCodePrints()
    {
        const auto terminal = load(fixture("agents/interactive.json"));
        QCOMPARE(
            ids(terminal),
            (QStringList{u"69df57d6-30b3-454a-9a28-16762bd40576:working"_s, u"aefe0d0b-131d-43a7-b83d-daf04de24178:blocked"_s}));
        QCOMPARE(terminal->front().title(), u"proj3-da"_s);
        QVERIFY(terminal->front().canResume());

        FakeFiles files;
        files.contents.insert(u"/home/me/.claude/jobs/6eb18cfb/state.json"_s, fixture("agents/state-asking.json"));
        const auto background = load(fixture("agents/background.json"), files);
        QCOMPARE(ids(background),
                 (QStringList{u"bf57867d:working"_s, u"795e03fd:working"_s, u"6eb18cfb:blocked"_s, u"91232fdd:failed"_s,
                              u"80568e3d:blocked"_s, u"c1ba8166:stopped"_s}));
        QCOMPARE(background->at(2).detail, u"starting…"_s);
        QCOMPARE(background->at(3).detail, std::nullopt);
        QCOMPARE(load(fixture("agents/none.json")), QList<Agent>());
    }

    void takesTheFirstIdAndStateThereIs()
    {
        const auto agents = parseAgents(R"([{"pid":-12,"startedAt":1}, {"id":null,"sessionId":"s","pid":3,"startedAt":1},
            {"id":"a","status":"busy","startedAt":1}, {"id":"b","state":"blocked","status":"busy","startedAt":1.5e3}])");
        QCOMPARE(ids(agents), (QStringList{u"-12:idle"_s, u"s:idle"_s, u"a:working"_s, u"b:blocked"_s}));
        QCOMPARE(agents->at(1).sessionId, u"s"_s);
        QCOMPARE(agents->at(3).startedAt, 1500.0);
    }
    void oneBadElementFailsTheListing()
    {
        const QByteArray good = R"({"id":"a","startedAt":1,"new":{"x":[1]},"name":null})";
        QVERIFY(parseAgents("[" + good + "]"));
        for (const char *element :
             {R"({"id":"a"})", R"({"id":"a","startedAt":null})", R"({"id":"a","startedAt":"1"})", R"({"startedAt":1})",
              R"({"id":7,"startedAt":1})", R"({"id":"a","name":7,"startedAt":1})", R"({"id":"a","pid":"7","startedAt":1})",
              R"({"id":"a","pid":7.5,"startedAt":1})", R"({"id":"a","status":true,"startedAt":1})",
              R"({"id":"a","kind":[],"startedAt":1})", R"({"id":"a","cwd":{},"startedAt":1})",
              R"({"id":"a","sessionId":1,"startedAt":1})", "7", "null", "[]"})
            QVERIFY2(!parseAgents("[" + good + "," + element + "]"), element);
    }

    void failsWithoutAListing()
    {
        for (const QByteArray &listing :
             {QByteArray(), QByteArray("{}"), QByteArray("[{"), QByteArray("claude: no\n[]"), QByteArray(200000, '[')})
            QVERIFY(!load(listing));
        FakeToolRunner tools;
        tools.answers.insert(u"claude agents --json"_s, {false, "[]", u"timed out after 15 s"_s});
        QVERIFY(!loadAgents(tools, FakeFiles(), u"/home/me"_s));
    }

    void detailComesFromAWellFormedStateFileInTheJobsFolderOnly()
    {
        const QByteArray listing =
            R"([{"id":"text","state":"blocked","startedAt":9},{"id":"number","state":"blocked","startedAt":8},
            {"id":"cut","state":"blocked","startedAt":7},{"id":"huge","state":"blocked","startedAt":6},
            {"id":"..","state":"blocked","startedAt":5},{"id":"../x","state":"blocked","startedAt":4},
            {"id":"","state":"blocked","startedAt":3}])";
        FakeFiles files;
        const auto state = [&files](const char *id, const QByteArray &content) {
            files.contents.insert(u"/home/me/.claude/jobs/%1/state.json"_s.arg(QLatin1String(id)), content);
        };
        state("text", R"({"detail":"reading"})");
        state("number", R"({"detail":7})");
        state("cut", "{\"detail\":");
        state("huge", R"({"detail":"x"})" + QByteArray(1024 * 1024, ' '));
        for (const char *outside : {"..", "../x", ""})
            state(outside, R"({"detail":"not ours"})");
        const auto agents = load(listing, files);
        QVERIFY(agents);
        QCOMPARE(agents->size(), 7);
        QCOMPARE(agents->front().detail, u"reading"_s);
        for (const Agent &agent : agents->sliced(1))
            QCOMPARE(agent.detail, std::nullopt);
    }

    void workingOnesLeadNewestFirstAndTiesStay()
    {
        QCOMPARE(ids(load(R"([{"id":"a","state":"blocked","startedAt":9},{"id":"b","state":"working","startedAt":1},
                     {"id":"c","state":"working","startedAt":5},{"id":"d","state":"done","startedAt":7},
                     {"id":"e","state":"working","startedAt":5},{"id":"f","state":"paused","startedAt":9}])")),
                 (QStringList{u"c:working"_s, u"e:working"_s, u"b:working"_s, u"a:blocked"_s, u"f:paused"_s}));
    }

    void findsToolsByTheirCommandLines()
    {
        const auto tools = scan("  10:01 /sbin/init splash\n"
                                "\t 03:00 /home/me/.npm/bin/codex\n"
                                "01:00:00 node /usr/lib/x/codex \n"
                                "   59:59 /opt/CODEX exec bin/goose\n"
                                "00:07 /Applications/Cursor.app/Contents/MacOS/Cursor --x\n"
                                "nospace\n\n"
                                "00:05 bin/codex\xff bin/aider\n"
                                "00:05 ollama run llama\n");
        QCOMPARE(tools,
                 (QList<ToolProcess>{{u"Codex"_s, u"chevron.left.forwardslash.chevron.right"_s, 4, u"01:00:00"_s, {}},
                                     {u"Cursor"_s, u"cursorarrow.rays"_s, 1, u"00:07"_s, {}}}));
    }

    void findsWhatLinuxInstalls()
    {
        const auto tools = scan("05:00 /usr/share/cursor/cursor /home/me/proj\n"
                                "05:00 /usr/share/cursor/cursor --type=renderer --x\n"
                                "06:00 /tmp/.mount_CursorAb12/usr/bin/cursor\n"
                                "04:00 /opt/Windsurf/windsurf --new-window\n"
                                "03:00 /home/me/Apps/Windsurf-1.2-x86_64.AppImage\n"
                                "02:00 goose session --name x\n"
                                "01:00 /usr/bin/cursor-theme-editor\n"
                                "01:00 vi /usr/share/cursor/cursor\n"
                                "01:00 goose up\n");
        QCOMPARE(tools,
                 (QList<ToolProcess>{{u"Cursor"_s, u"cursorarrow.rays"_s, 2, u"06:00"_s, {}},
                                     {u"Goose"_s, u"bird"_s, 1, u"02:00"_s, {}},
                                     {u"Windsurf"_s, u"wind"_s, 2, u"04:00"_s, {}}}));
    }

    void usesWhatPsPrintedEvenIfItFailed()
    {
        QCOMPARE(scan("1-00:00:00 aider bin/aider\n", {}, false).size(), 1);
        FakeToolRunner none;
        QVERIFY(scanTools(none).isEmpty());
        QCOMPARE(none.ran, QStringList{u"ps -axo etime=,args="_s}); // no Ollama, no question to it
    }
    void saysWhatOllamaHasLoaded()
    {
        for (const auto &[models, note] : {std::pair("NAME ID SIZE\n", u"no model loaded"_s), std::pair("", u"no model loaded"_s),
                                           std::pair("NAME ID SIZE\na:7b  x 4 GB\n   \n\n b  y\n", u"a:7b, b"_s)})
            QCOMPARE(scan("05:32 ollama serve", models), (QList<ToolProcess>{{u"Ollama"_s, u"cpu"_s, 1, u"05:32"_s, note}}));
    }
};

static const Registered<ReadingTest> registered;
#include "ReadingTest.moc"
