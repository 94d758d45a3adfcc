#include "RunTests.h"

#include "Feeds/Usage/UsageBytes.h"
#include "Feeds/Usage/UsageLine.h"
#include "Feeds/Usage/UsageValues.h"

namespace velto {

namespace {

/// Parses a copy of exactly the line's size, so that a sanitizer notices reads beyond its end.
std::optional<UsageLine> parse(const QByteArray &line)
{
    static UsageLineParser parser;
    const std::unique_ptr<char[]> bytes(new char[std::size_t(line.size())]);
    std::copy(line.begin(), line.end(), bytes.get());
    return parser.parse({bytes.get(), std::size_t(line.size())});
}

QByteArray withUsage(const QByteArray &usage)
{
    return R"({"type":"assistant","timestamp":"2026-11-15T08:01:02.345Z","message":{"usage":)" + usage + "}}";
}

QByteArray nested(int levels)
{
    return withUsage(R"({"input_tokens":7},"x":)" + QByteArray(levels - 2, '[') + QByteArray(levels - 2, ']'));
}

} // namespace

/// What is read from one line of a log.
class UsageLineTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsWhatClaudeCodeWrites()
    {
        // Recorded from Claude Code 2.1.197.
        const QByteArray line =
            R"({"parentUuid":"0cddbe98-0de2-4e83-9f5e-cbee35c87768","isSidechain":false,"message":{"id":"msg_0009mock10383",)"
            R"("type":"message","role":"assistant","model":"claude-opus-4-8","content":[{"type":"text","text":"I will use a tool."}],)"
            R"("stop_reason":"tool_use","stop_sequence":null,"usage":{"input_tokens":12,"cache_creation_input_tokens":340,)"
            R"("cache_read_input_tokens":15600,"output_tokens":87,"server_tool_use":{"web_search_requests":0,"web_fetch_requests":0},)"
            R"("service_tier":"standard","cache_creation":{"ephemeral_1h_input_tokens":0,"ephemeral_5m_input_tokens":0},)"
            R"("inference_geo":"","iterations":[],"speed":"standard"},"stop_details":null},"requestId":"req_0008mock10383",)"
            R"("type":"assistant","uuid":"063f1bd4-f2cb-46c7-bdd8-04bc40865493","timestamp":"2026-11-21T02:02:07.065Z",)"
            R"("userType":"external","entrypoint":"cli","cwd":"/home/me/proj","version":"2.1.197","gitBranch":"HEAD"})";
        const auto at = QDateTime(QDate(2026, 11, 21), QTime(2, 2, 7, 65), Qt::UTC).toMSecsSinceEpoch();
        QCOMPARE(parse(line), (UsageLine{at, 12, 87, 15600, 340}));
    }

    void counts()
    {
        const auto row = [](const char *name, const QByteArray &line, qint64 input) {
            const auto read = parse(line);
            QVERIFY2(read && read->input == input, name);
        };
        for (const auto &[value, input] : {std::pair("1.5", 0LL),
                                           {"12.0", 12},
                                           {"\"12\"", 0},
                                           {"[12]", 0},
                                           {"-3", -3},
                                           {"9223372036854775807", std::numeric_limits<qint64>::max()},
                                           {"9223372036854775808", 0}})
            row(value, withUsage("{\"input_tokens\":" + QByteArray(value) + '}'), input);
        row("nothing", withUsage("{}"), 0);
        row("twice", withUsage(R"({"input_tokens":1,"input_tokens":2})"), 2);
        row("twice, no integer", withUsage(R"({"input_tokens":1,"input_tokens":null})"), 0);
        row("usage twice", withUsage(R"({"input_tokens":1},"usage":{"output_tokens":2})"), 0);
        row("escaped", withUsage(R"({"input\u005ftokens":5})").replace("assistant", R"(\u0061ssistan\u0074)"), 5);
        row("blanks", withUsage("{ \"input_tokens\" :\t5 }\r").replace("\"type\":", "\"type\" : "), 5);
        row("half a surrogate pair", withUsage(R"({"input_tokens":5,"x":"\ud83d","\udead":1})"), 5);
        row("numbers beyond 64 bits", withUsage(R"({"input_tokens":5,"x":[18446744073709552000,1e999,-0.0E-999]})"), 5);
        row("as deep as may be", nested(1024), 7);
    }

    void refuses()
    {
        const QByteArray good = withUsage("{}");
        const auto row = [](const char *name, const QByteArray &line) { QVERIFY2(!parse(line), name); };
        const auto with = [good](const QByteArray &value) { return QByteArray(good).replace("}}", "},\"x\":" + value + "}"); };
        row("another type", QByteArray(good).replace("assistant", "user"));
        row("a type that is no text", QByteArray(good).replace("\"assistant\"", "[\"assistant\"]"));
        row("no time", QByteArray(good).replace("timestamp", "timestampe"));
        row("no fractions of a second", QByteArray(good).replace(".345", ""));
        row("no usage", QByteArray(good).replace("usage", "usages"));
        row("usage that is no object", withUsage("[]"));
        row("usage at the top only", R"({"type":"assistant","timestamp":"2026-11-15T08:01:02.345Z","usage":{},"message":{}})");
        row("a message that isn't one after all", good.chopped(1) + ",\"message\":5}");
        row("a list", '[' + good + ']');
        row("cut short", good.chopped(1));
        row("cut short in a text", good.left(30));
        row("two in one", good + good);
        row("one written into another", good.left(60) + good);
        row("a key without quotes", QByteArray(good).replace("\"type\"", "type"));
        row("no colon", QByteArray(good).replace("\"type\":", "\"type\""));
        row("a zero byte", good + '\0');
        for (const char *value : {"[1,]", "[1 2]", "[1}", "truer", "012", "-", "1.", "1e+", "12\"a\"", "\"a\"b", "\"\\x\"",
                                  "\"\\u12g4\"", "\\n1", "\"\t\"", "\"\xc3(\""})
            row(value, with(value));
        row("too deep", nested(1025));
        row("nothing but depth", QByteArray(100'000, '['));
        row("empty", {});
        row("blank", "\r");
    }

    void knowsTheTime()
    {
        const auto row = [](const char *text, qint64 milliseconds) { // -1: none
            QVERIFY2(parseLogTime(std::string_view(text)).value_or(-1) == milliseconds, text);
        };
        row("1970-01-01T00:00:00.000Z", 0);
        row("2026-11-15T08:01:02.345Z", 1'794'729'662'345);
        row("2026-11-15T08:01:02.3Z", 1'794'729'662'300);
        row("2026-11-15T08:01:02.3459999Z", 1'794'729'662'345);
        row("2026-11-15T09:01:02.345+01:00", 1'794'729'662'345);
        row("2026-11-14T22:31:02.345-09:30", 1'794'729'662'345);
        row("2024-02-29T00:00:00.0Z", 1'709'164'800'000);
        for (const char *const bad :
             {"", "2026-11-15T08:01:02Z", "2026-11-15T08:01:02.Z", "2026-11-15T08:01:02.345", "2026-11-15T08:01:02.345z",
              "2026-11-15 08:01:02.345Z", "2026-11-15T08:01:02,345Z", "2026-02-29T08:01:02.345Z", "2026-13-01T08:01:02.345Z",
              "2026-11-15T24:00:00.000Z", "2026-11-15T08:60:02.345Z", "2026-11-15T08:01:60.345Z", "2026-11-15T08:01:02.345+0100",
              "2026-11-15T08:01:02.345+24:00", "2026-11-15T08:01:02.345+01:00 ", "2026-11-15T08:01:02.345ZZ",
              "+026-11-15T08:01:02.345Z"})
            row(bad, -1);
    }

    void findsEachHint()
    {
        for (const QByteArray &hint : {QByteArray("\"assistant\""), QByteArray(R"(\u0061)"), QByteArray(R"(\u0074)")}) {
            for (int size = int(hint.size()); size < 200; ++size) {
                for (int at = 0; at + hint.size() <= size; ++at) {
                    QByteArray bytes(size, 's'); // \u00 and " nearly everywhere else
                    for (int i = 0; i < size; i += 3)
                        bytes[i] = '"';
                    bytes.replace(at, hint.size(), hint);
                    QCOMPARE(findUsageHint(bytes.begin(), bytes.end()) - bytes.begin(), at);
                    bytes[at + hint.size() - 1] = '\\';
                    QVERIFY(findUsageHint(bytes.begin(), bytes.end()) == bytes.end() || hint.size() == 6);
                }
            }
        }
    }

    void findsEachBadEscape()
    {
        for (int size = 1; size < 200; ++size) {
            for (int at = 0; at < size; ++at) {
                QByteArray bytes(size, 'n');
                bytes[at] = '\\';
                const bool isLast = at + 1 == size;
                QCOMPARE(areEscapesValid(bytes.begin(), bytes.end()), !isLast);
                if (isLast)
                    continue;
                bytes[at + 1] = 'x';
                QVERIFY(!areEscapesValid(bytes.begin(), bytes.end()));
                // As many backslashes before it as fit: after an even number it is an ordinary letter.
                for (int i = 0; i < at; ++i)
                    bytes[i] = '\\';
                QCOMPARE(areEscapesValid(bytes.begin(), bytes.end()), at % 2 == 1);
            }
        }
    }
};

const Registered<UsageLineTest> registered;

} // namespace velto

#include "UsageLineTest.moc"
