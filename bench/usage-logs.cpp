// Writes logs like Claude Code's, always the same ones: 233 files with lines of all the kinds that it writes, in typical sizes
// (5 KB on average, up to 2.3 MB), all with the timestamp given. Prints the sums that they hold. Usage: usage-logs FOLDER BYTES
// TIMESTAMP

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <cstdio>
#include <random>

namespace {

constexpr int kFiles = 233;
constexpr int kProjects = 12;
constexpr qsizetype kLargestLine = 2'300'000;

struct Sums {
    qint64 input = 0;
    qint64 output = 0;
    qint64 cacheRead = 0;
    qint64 cacheWrite = 0;
    qint64 turns = 0;
};

class Writer {
public:
    explicit Writer(QByteArray timestamp)
        : m_timestamp(std::move(timestamp))
    {
        const QByteArray kinds[] = {
            R"(The reader keeps the offset of each file, so a refresh costs what was added. I will run the tests again now.\n\n)",
            R"(    for (const auto &row : rows) {\n        if (row.id == \"todo\")\n            return row;\n    }\n)",
            R"(  PASS  src/reader.test.ts (12 tests) 48ms\n\tat Object.<anonymous> (/home/me/proj/src/reader.test.ts:41:17)\n)",
            R"({\"type\":\"module\",\"path\":\"/home/me/proj/src/main.cpp\",\"lines\":[1,2,3],\"role\":\"owner\"}\n)",
            "Gr\xc3\xb6\xc3\x9f"
            "e \xe2\x80\x94 na\xc3\xafve caf\xc3\xa9, \xe6\x97\xa5\xe6\x9c\xac\xe8\xaa\x9e\\n",
            R"(-rw-r--r-- 1 me me   48213 Nov 21 09:14 build/debug/CMakeFiles/core.dir/Reader.cpp.o\n)",
        };
        while (m_pool.size() < 1'000'000)
            m_pool += number(0, 49) ? kinds[number(0, 5)] : QByteArray(R"(\u001b[32m  ok\u001b[0m C:\\src\\Reader.cpp\n)");
        const char letters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        while (m_base64.size() < kLargestLine)
            m_base64 += letters[number(0, 63)];
    }

    /// One line, of a kind chosen with its usual frequency.
    QByteArray line()
    {
        const int kind = number(0, 999);
        if (kind < 180)
            return answer(R"({"type":"text","text":")" + text(number(200, 3000)) + R"("})");
        if (kind < 400)
            return answer(R"({"type":"tool_use","id":"toolu_01","name":"Bash","input":{"command":")"
                          + text(kind < 200 ? number(5000, 20000) : number(80, 1200))
                          + R"(","description":"Run it","timeout":120000}})");
        if (kind < 450)
            return answer(R"({"type":"thinking","thinking":")" + text(number(300, 2000)) + R"(","signature":")"
                          + m_base64.left(number(400, 2000)) + R"("})");
        if (kind < 800)
            return result(kind < 500 ? number(8000, 50000) : number(100, 5000));
        if (kind == 999)
            return image(number(0, 15) ? number(60'000, 400'000) : number(400'000, int(kLargestLine)));
        if (kind < 880)
            return R"({"type":"progress","data":{"message":{"type":"assistant","message":{"content":[{"type":"text","text":")"
                + text(number(200, 2000)) + R"("}],"usage":{"input_tokens":5,"output_tokens":9}}}},)" + tail();
        if (kind < 960)
            return R"({"parentUuid":null,"isSidechain":false,"attachment":{"type":"hook_success","content":")" + text(300)
                + R"("},"type":"attachment",)" + tail();
        return R"({"type":"file-history-snapshot","messageId":"0cddbe98","snapshot":{"trackedFileBackups":{}}})"
               "\n";
    }

    Sums sums;

private:
    int number(int from, int to) { return from + int(m_random() % unsigned(to - from + 1)); }

    /// Begins and ends where a line of the pool does, so that no escape and no character is split.
    QByteArray text(int size)
    {
        const auto begin = m_pool.indexOf("\\n", number(0, int(m_pool.size()) - size - 2000)) + 2;
        return m_pool.mid(begin, m_pool.indexOf("\\n", begin + size) + 2 - begin);
    }

    QByteArray tail()
    {
        return R"("uuid":"063f1bd4-f2cb-46c7-bdd8-04bc40865493","timestamp":")" + m_timestamp
            + R"(","userType":"external","entrypoint":"cli","cwd":"/home/me/proj","sessionId":"aefe0d0b-131d-43a7-b83d-daf04de24178",)"
              R"("version":"2.1.197","gitBranch":"main"})"
              "\n";
    }

    QByteArray answer(const QByteArray &content)
    {
        const int input = number(1, 40);
        const int output = number(1, 4000);
        const int read = number(0, 200'000);
        const int written = number(0, 9000);
        sums = {sums.input + input, sums.output + output, sums.cacheRead + read, sums.cacheWrite + written, sums.turns + 1};
        const auto count = [](const char *name, int value) {
            return '"' + QByteArray(name) + "\":" + QByteArray::number(value) + ',';
        };
        return R"({"parentUuid":"0cddbe98-0de2-4e83-9f5e-cbee35c87768","isSidechain":false,"message":{"id":"msg_01","type":"message",)"
               R"("role":"assistant","model":"claude-opus-4-8","content":[)"
            + content + R"(],"stop_reason":"tool_use","stop_sequence":null,"usage":{)" + count("input_tokens", input)
            + count("cache_creation_input_tokens", written) + count("cache_read_input_tokens", read)
            + count("output_tokens", output)
            + R"("server_tool_use":{"web_search_requests":0,"web_fetch_requests":0},"service_tier":"standard",)"
              R"("cache_creation":{"ephemeral_1h_input_tokens":0,"ephemeral_5m_input_tokens":0},"inference_geo":"",)"
              R"("iterations":[],"speed":"standard"},"stop_details":null},"requestId":"req_01","type":"assistant",)"
            + tail();
    }

    /// A line with a tool's result, which contains it twice.
    QByteArray result(int size)
    {
        const QByteArray said = text(size / 2);
        return R"({"parentUuid":"063f1bd4","isSidechain":false,"type":"user","message":{"role":"user","content":[{"tool_use_id":)"
               R"("toolu_01","type":"tool_result","content":")"
            + said + R"(","is_error":false}]},"toolUseResult":{"stdout":")" + said + R"(","stderr":"","interrupted":false},)"
            + tail();
    }

    QByteArray image(int size)
    {
        return R"({"parentUuid":"063f1bd4","isSidechain":false,"type":"user","message":{"role":"user","content":[{"type":"image",)"
               R"("source":{"type":"base64","media_type":"image/png","data":")"
            + m_base64.left(size) + R"("}}]},)" + tail();
    }

    QByteArray m_timestamp;
    QByteArray m_pool;
    QByteArray m_base64;
    std::mt19937 m_random{20261121};
};

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4)
        return 2;
    const qint64 bytes = QByteArray(argv[2]).toLongLong();
    Writer writer(argv[3]);
    qint64 written = 0;
    qint64 lines = 0;
    for (int i = 0; i < kFiles; ++i) {
        const QString folder = QString::fromLocal8Bit(argv[1]) + QStringLiteral("/-home-me-proj%1").arg(i % kProjects);
        QFile file(folder + QStringLiteral("/session-%1.jsonl").arg(i));
        if (!QDir().mkpath(folder) || !file.open(QIODevice::WriteOnly))
            return 1;
        for (; written < bytes / kFiles * (i + 1); ++lines) {
            const QByteArray line = writer.line();
            if (file.write(line) != line.size())
                return 1;
            written += line.size();
        }
    }
    const Sums &sums = writer.sums;
    std::printf("{\"bytes\": %lld, \"lines\": %lld, \"sums\": \"%lld %lld %lld %lld %lld\"}\n", static_cast<long long>(written),
                static_cast<long long>(lines), static_cast<long long>(sums.input), static_cast<long long>(sums.output),
                static_cast<long long>(sums.cacheRead), static_cast<long long>(sums.cacheWrite),
                static_cast<long long>(sums.turns));
    return 0;
}
