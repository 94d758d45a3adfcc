#include "Hooks/SettingsEdit.h"
#include "Fixture.h"
#include "RunTests.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;
using namespace velto;

namespace {

const QByteArray kMarker = "127.0.0.1:4747/";
const std::vector<SettingsHook> kHooks{{"Stop", "curl '127.0.0.1:4747/event'", {}},
                                       {"PermissionRequest", "curl '127.0.0.1:4747/permission'", 40}};
const QByteArray kStopGroup = R"({"hooks":[{"type":"command","command":"curl '127.0.0.1:4747/event'"}]})";
const QByteArray kPermissionGroup = R"({"hooks":[{"type":"command","command":"curl '127.0.0.1:4747/permission'","timeout":40}]})";

QByteArray bytesOf(const SettingsText &text)
{
    const auto *bytes = std::get_if<QByteArray>(&text);
    return bytes ? *bytes : "error: " + std::get<QString>(text).toUtf8();
}

QByteArray with(const QByteArray &settings)
{
    return bytesOf(withHooks(settings, kHooks, kMarker));
}

QByteArray without(const QByteArray &settings)
{
    return bytesOf(withoutHooks(settings, kHooks, kMarker));
}

/// The same JSON without the blanks between its tokens.
QByteArray tokens(const QByteArray &json)
{
    QByteArray out;
    bool inText = false;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (!inText && (c == ' ' || c == '\n' || c == '\r' || c == '\t'))
            continue;
        out.append(c);
        if (inText && c == '\\')
            out.append(json[++i]);
        else if (c == '"')
            inText = !inText;
    }
    return out;
}

QByteArray randomJson(QRandomGenerator &random, int depth)
{
    static const QByteArrayList scalars = QByteArray("null true false 0 -0 1e5 1E-7 123456789012345678901234 1.0 0.50 \"\" "
                                                     "\"http://127.0.0.1:4747/event\" \"\\\\\\\"\\n\\u0007\" "
                                                     "\"é🙂/\xE2\x80\xAE\" \"[{,:\"")
                                              .split(' ');
    static const QByteArrayList keys{"\"a\"", "\"\"", "\"hooks\"", "\"Stop\"", "\"command\"", "\"ключ\"", "\"a\\\"b\""};
    const int kind = depth > 0 ? random.bounded(4) : 3;
    if (kind >= 2)
        return scalars[random.bounded(scalars.size())];
    QByteArrayList parts;
    for (int count = random.bounded(5); count > 0; --count) {
        const QByteArray value = randomJson(random, depth - 1);
        parts.append(kind == 0 ? value : keys[random.bounded(keys.size())] + ": " + value);
    }
    const QByteArray inner = parts.join(" ,\n ");
    return kind == 0 ? "[ " + inner + "]" : "{" + inner + " }";
}

/// Settings as anyone may have them, with other people's hooks beside ours, but nothing that an edit would tidy away.
QByteArray randomSettings(QRandomGenerator &random)
{
    QByteArrayList members;
    for (int count = random.bounded(6); count > 0; --count)
        members.append("\"k" + QByteArray::number(count % 3) + "\":" + randomJson(random, 5));
    if (random.bounded(2) == 0) {
        QByteArrayList events{"\"PreToolUse\":" + randomJson(random, 4)};
        for (const QByteArray event : {"Stop", "PermissionRequest"}) {
            if (random.bounded(2) == 0)
                events.append('"' + event + R"(": [{"hooks":[{"command":"other"}],"x":)" + randomJson(random, 3) + "}]");
        }
        members.insert(random.bounded(members.size() + 1), "\"hooks\":{" + events.join(',') + '}');
    }
    return '{' + members.join(',') + '}';
}

} // namespace

class SettingsEditTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLayoutIsClaudeCodesOwn()
    {
        const QByteArray expected = R"({
  "none": {},
  "list": [
    1,
    []
  ],
  "text": "a/b é \u001f",
  "hooks": {
    "PermissionRequest": [
      {
        "hooks": [
          {
            "type": "command",
            "command": "curl '127.0.0.1:4747/permission'",
            "timeout": 40
          }
        ]
      }
    ]
  }
})";
        const QByteArray settings = R"({"none":{},"list":[1,[]],"text":"a\/b \u00e9 \u001F"})";
        const auto laidOut = [](const QByteArray &bytes) { return bytesOf(withHooks(bytes, {kHooks[1]}, kMarker)); };
        QCOMPARE(laidOut(settings), expected);
        QCOMPARE(laidOut(settings + "\r\n"), expected + '\n');
        QCOMPARE(laidOut("\xEF\xBB\xBF" + settings), "\xEF\xBB\xBF" + expected);
    }

    void editsTouchOnlyWhatIsOurs()
    {
        const auto row = [](const char *name, const QByteArray &settings, const QByteArray &installed,
                            const QByteArray &removed) {
            QVERIFY2(tokens(with(settings)) == installed, (name + (": " + tokens(with(settings)))).constData());
            QVERIFY2(tokens(without(settings)) == removed, (name + (": " + tokens(without(settings)))).constData());
        };
        const auto hooks = [](const QByteArray &events) -> QByteArray { return "{\"hooks\":{" + events + "}}"; };
        const QByteArray ours = R"("Stop":[)" + kStopGroup + R"(],"PermissionRequest":[)" + kPermissionGroup + "]";
        const QByteArray other = R"({"matcher":"x","hooks":[{"command":"say 4747"}]})";
        const QByteArray older = R"({"hooks":[{"command":"curl -m 9 http:\/\/127.0.0.1:4747\/event"}]})";
        const QByteArray permission = R"("PermissionRequest":[)" + kPermissionGroup + "]";

        row("nothing there", QByteArray("{}"), hooks(ours), QByteArray("{}"));
        row("hooks no object", QByteArray(R"({"hooks":[1]})"), hooks(ours), QByteArray("{}"));
        row("already ours", hooks(ours), hooks(ours), QByteArray("{}"));
        row("older and others keep their places",
            hooks("\"Stop\":[" + older + ',' + other + ",{}," + older + "],\"Else\":[" + older + ']'),
            hooks("\"Stop\":[" + other + ",{}," + kStopGroup + "],\"Else\":[" + tokens(older).replace("\\/", "/") + "],"
                  + permission),
            hooks("\"Stop\":[" + other + ",{}],\"Else\":[" + tokens(older).replace("\\/", "/") + ']'));
        row("a mixed group is ours", hooks(R"("Stop":[{"hooks":[{"command":"mine"},{"command":"127.0.0.1:4747/"}]}])"),
            hooks(ours), QByteArray("{}"));
        const QByteArray odd = R"({"hooks":[{"command":"127.0.0.1:4747/"},5]},{"hooks":{"command":"127.0.0.1:4747/"}},)"
                               R"({"command":"127.0.0.1:4747/"},{"hooks":[{"command":["127.0.0.1:4747/"]}]})";
        row("other shapes aren't ours", hooks("\"Stop\":[" + odd + ']'),
            hooks("\"Stop\":[" + odd + ',' + kStopGroup + "]," + permission), hooks("\"Stop\":[" + odd + ']'));
        row("half of a pair of escapes stays one", QByteArray(R"({"a\udE00":"\ud83d\ude00 \uDfff \uD83D \\ud800"})"),
            R"({"a\ude00":"😀 \udfff \ud83d \\ud800","hooks":{)" + ours + "}}",
            QByteArray(R"({"a\ude00":"😀 \udfff \ud83d \\ud800"})"));
        row("an event that is no list of groups", hooks(R"("Stop":[{},7],"PermissionRequest":{"a":1},"Else":7)"),
            hooks(ours + R"(,"Else":7)"), hooks(R"("Else":7)"));
        row("keys that stand twice",
            QByteArray(R"({"a":1,"hooks":{"X":1},"a":2,"hooks":{"Stop":[)" + older + "],\"Stop\":[" + other + "]}}"),
            QByteArray(R"({"a":1,"hooks":{"X":1},"a":2,"hooks":{"Stop":[],"Stop":[)" + other + ',' + kStopGroup + "],"
                       + permission + "}}"),
            QByteArray(R"({"a":1,"hooks":{"X":1},"a":2,"hooks":{"Stop":[)" + other + "]}}"));
    }

    void whatMakesNoSenseIsRefused()
    {
        const auto row = [](const QByteArray &settings, const QString &problem) {
            QCOMPARE(std::get<QString>(withHooks(settings, kHooks, kMarker)), problem);
            QCOMPARE(std::get<QString>(withoutHooks(settings, kHooks, kMarker)), problem);
        };
        const auto at = [](int line, const char *problem) {
            return u"Line %1 of your Claude settings file: %2"_s.arg(line).arg(QLatin1StringView(problem));
        };
        const QString noObject = u"Your Claude settings file isn't valid JSON, so Velto left it alone."_s;
        row(QByteArray("[]"), noObject);
        row(QByteArray("\"{}\""), noObject);
        row(QByteArray(), at(1, "The document is empty."));
        row(QByteArray("{"), at(1, "Missing a name for object member."));
        row(QByteArray("{\n  \"a\": 1,\n}"), at(3, "Missing a name for object member."));
        row(QByteArray("{} // mine"), at(1, "The document root must not be followed by other values."));
        row(QByteArray("{}\n\0{", 5), at(2, "There is a zero byte in it."));
        row(QByteArray("{\"a\":\"\xC3(\"}"), at(1, "Invalid encoding in string."));
        row(QByteArray("{\"a\":" + QByteArray(1000000, '[')), at(1, "It is nested too deeply."));
    }

    void anySettingsComeBackAsTheyWere()
    {
        for (const char *name : {"everyday", "odd-spellings", "empty-object"}) {
            const QByteArray settings = fixture("claude-settings/" + QByteArray(name) + ".json");
            QCOMPARE(tokens(without(with(settings))), tokens(settings));
            if (settings.contains("\n  ")) // in Claude Code's own layout: not a byte differs
                QCOMPARE(without(with(settings)), settings);
        }
        QRandomGenerator random(20261121);
        for (int round = 0; round < 2000; ++round) {
            const QByteArray settings = randomSettings(random);
            const QByteArray installed = with(settings);
            QVERIFY2(!installed.startsWith("error"), settings.constData());
            QCOMPARE(with(installed), installed);
            QByteArray rest = tokens(installed);
            for (const QByteArray &group : {kStopGroup, kPermissionGroup}) {
                const qsizetype place = rest.indexOf(group);
                QVERIFY(place > 0);
                rest.remove(place, group.size());
            }
            QCOMPARE(rest.count("4747"), settings.count("4747"));
            QCOMPARE(tokens(without(installed)), tokens(settings));
        }
    }
};

static const Registered<SettingsEditTest> registered;

#include "SettingsEditTest.moc"
