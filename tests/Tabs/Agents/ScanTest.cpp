#include "Platform/Fake/FakeToolRunner.h"
#include "RunTests.h"
#include "Tabs/Agents/ToolProcess.h"

using namespace Qt::StringLiterals;
using namespace velto;

class ScanTest : public QObject {
    Q_OBJECT

    static QList<ToolProcess> scan(const QByteArray &table, const QByteArray &models = {}, bool ok = true)
    {
        FakeToolRunner tools;
        tools.answers.insert(u"ps -axo etime=,args="_s, {ok, table, {}});
        tools.answers.insert(u"ollama ps"_s, {ok, models, {}});
        return scanTools(tools);
    }

private Q_SLOTS:
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
        QCOMPARE(none.ran, QStringList{u"ps -axo etime=,args="_s}); // without Ollama, it isn't asked
    }
    void saysWhatOllamaHasLoaded()
    {
        for (const auto &[models, note] : {std::pair("NAME ID SIZE\n", u"no model loaded"_s), std::pair("", u"no model loaded"_s),
                                           std::pair("NAME ID SIZE\na:7b  x 4 GB\n   \n\n b  y\n", u"a:7b, b"_s)})
            QCOMPARE(scan("05:32 ollama serve", models), (QList<ToolProcess>{{u"Ollama"_s, u"cpu"_s, 1, u"05:32"_s, note}}));
    }

    void shortensElapsedTimes()
    {
        for (const auto &[etime, expected] : {std::pair(u"3-04:05:06"_s, u"3d"_s),
                                              {u"02:14:05"_s, u"2h"_s},
                                              {u"00:40"_s, u"0m"_s},
                                              {u"40"_s, u"40"_s},
                                              {QString(), QString()},
                                              {u"?:x"_s, u"?:x"_s}})
            QCOMPARE(shortEtime(etime), expected);
    }
};

static const Registered<ScanTest> registered;
#include "ScanTest.moc"
