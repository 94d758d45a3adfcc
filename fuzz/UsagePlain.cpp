#include "UsagePlain.h"

#include <QDateTime>
#include <QRegularExpression>
#include <algorithm>
#include <cctype>
#include <cmath>
#include <rapidjson/document.h>
#include <rapidjson/error/error.h>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

using rapidjson::Value;

/// Lone surrogates are valid JSON but not valid text, which the library rejects: each becomes a letter.
QByteArray withoutSurrogates(QByteArray line)
{
    for (qsizetype at = line.indexOf('\\'); at >= 0 && at + 6 <= line.size(); at = line.indexOf('\\', at + 2)) {
        const QByteArray code = line.mid(at + 2, 4).toLower();
        const auto isHex = [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; };
        if (line[at + 1] == 'u' && code.startsWith('d') && QByteArrayView("89abcdef").contains(code[1])
            && std::all_of(code.begin(), code.end(), isHex))
            line.replace(at + 2, 4, "0041");
    }
    return line;
}

const Value *lastMember(const Value *parent, const char *name)
{
    const Value *found = nullptr;
    if (parent && parent->IsObject()) {
        for (const auto &member : parent->GetObject()) {
            if (member.name == name)
                found = &member.value;
        }
    }
    return found;
}

std::optional<qint64> plainTime(const Value *value)
{
    static const QRegularExpression shape(
        uR"(^(\d{4}-\d\d-\d\dT(?:[01]\d|2[0-3]):[0-5]\d:[0-5]\d)\.(\d+)(?:Z|([+-])([01]\d|2[0-3]):([0-5]\d))\z)"_s);
    if (!value || !value->IsString())
        return std::nullopt;
    const auto match = shape.match(QString::fromUtf8(value->GetString(), qsizetype(value->GetStringLength())));
    const QDateTime time = QDateTime::fromString(match.captured(1) + u'Z', Qt::ISODate);
    if (!match.hasMatch() || !time.isValid())
        return std::nullopt;
    const int milliseconds = match.captured(2).leftJustified(3, u'0').left(3).toInt();
    const int east = (match.captured(4).toInt() * 60 + match.captured(5).toInt()) * (match.captured(3) == u'-' ? -1 : 1);
    return time.toMSecsSinceEpoch() + milliseconds - qint64(east) * 60'000;
}

qint64 plainCount(const Value *usage, const char *name)
{
    const Value *value = lastMember(usage, name);
    if (value && value->IsInt64())
        return value->GetInt64();
    if (value && value->IsDouble() && std::floor(value->GetDouble()) == value->GetDouble()
        && std::abs(value->GetDouble()) < 9223372036854775808.0)
        return qint64(value->GetDouble());
    return 0;
}

constexpr unsigned kStrict =
    rapidjson::kParseValidateEncodingFlag | rapidjson::kParseFullPrecisionFlag | rapidjson::kParseIterativeFlag;

} // namespace

std::optional<UsageLine> plainUsageLine(const QByteArray &line)
{
    const QByteArray text = withoutSurrogates(line);
    rapidjson::Document document;
    document.Parse<kStrict>(text.constData(), std::size_t(text.size()));
    // The library takes a zero byte for the end, and skips each byte of a byte order mark, even alone.
    if (document.HasParseError() || line.contains('\0') || line.startsWith('\xEF') || line.startsWith('\xBB')
        || line.startsWith('\xBF') || !document.IsObject())
        return std::nullopt;
    const Value *const type = lastMember(&document, "type");
    const Value *const usage = lastMember(lastMember(&document, "message"), "usage");
    const auto at = plainTime(lastMember(&document, "timestamp"));
    if (!type || !type->IsString() || *type != "assistant" || !usage || !usage->IsObject() || !at)
        return std::nullopt;
    return UsageLine{*at, plainCount(usage, "input_tokens"), plainCount(usage, "output_tokens"),
                     plainCount(usage, "cache_read_input_tokens"), plainCount(usage, "cache_creation_input_tokens")};
}

bool isBeyondPlain(const QByteArray &line)
{
    // For zeros written like this, and for digits beyond 64 bits, the library calls __builtin_clzll(0), which is undefined; for
    // hundreds of digits it reads beyond its table of powers.
    static const QRegularExpression oddNumber(u"[0.][eE]|[0-9.]{20}"_s);
    if (line.count('[') + line.count('{') > 1000 || oddNumber.match(QString::fromLatin1(line)).hasMatch())
        return true;
    const QByteArray text = withoutSurrogates(line);
    rapidjson::Document document;
    document.Parse<kStrict>(text.constData(), std::size_t(text.size()));
    return document.GetParseError() == rapidjson::kParseErrorNumberTooBig;
}

QByteArray UsageFuzz::line()
{
    for (;;) {
        QByteArrayList fields{R"("uuid":)" + text()};
        const char *const types[] = {"\"assistant\"", "\"assistant\"", "\"assistant\"", "\"user\"", R"("\u0061ssistant")", "7"};
        fields << R"("type":)" + QByteArray(types[number(0, 5)]) << R"("timestamp":)" + timestamp();
        fields << R"("message":)"
                + (number(0, 9) ? R"({"role":"assistant","content":)" + value(0) + R"(,"usage":)" + usage() + '}' : value(0));
        if (!number(0, 3))
            fields << text() + ':' + value(0);
        if (!number(0, 9))
            fields << fields[number(0, int(fields.size()) - 1)].replace("assistant", "system");
        std::shuffle(fields.begin(), fields.end(), m_random);
        const char *const separators[] = {",", ", ", "\t,\r "};
        QByteArray line = '{' + fields.join(separators[number(0, 2)]) + '}';
        if (!number(0, 2))
            damage(line);
        if (!isBeyondPlain(line) && !line.contains('\n'))
            return line;
    }
}

QByteArray UsageFuzz::text()
{
    const QByteArray parts[] = {"word ",
                                R"(\n)",
                                R"(\"assistant\")",
                                R"(\\)",
                                R"(\u001b[0m)",
                                "\xc3\xa4\xe6\x97\xa5",
                                R"(\/)",
                                R"(\ud83d)",
                                R"(\ud83d\ude00)",
                                R"(\u0061)",
                                R"({\"usage\":[1,2]})",
                                "0123456789012345678901234567890123456789",
                                ",",
                                "{",
                                QByteArray(70, 'x'),
                                "input_tokens"};
    QByteArray text = "\"";
    for (int i = number(0, 5); i > 0; --i)
        text += parts[number(0, int(std::size(parts)) - 1)];
    return text + '"';
}

QByteArray UsageFuzz::value(int depth)
{
    switch (number(0, depth > 3 ? 3 : 6)) {
    case 0:
        return number(0, 1) ? "true" : "null";
    case 1:
        return number(0, 9) ? count() : "18446744073709552000123";
    case 2:
    case 3:
        return text();
    case 4:
        return '[' + value(depth + 1) + ',' + value(depth + 1) + ']';
    case 5:
        return number(0, 1) ? "[]" : "{ }";
    default:
        return '{' + text() + ':' + value(depth + 1) + R"(,"usage": )" + value(depth + 1) + '}';
    }
}

QByteArray UsageFuzz::count()
{
    const char *const odd[] = {"1.5", "12.0", "1e3", "-4",   "true", "\"9\"", "null",  "9223372036854775808",
                               "{}",  "[1]",  "-0",  "1E-2", "-0.0", "12E+1", "0.5e1", "123456789012345678901"};
    return number(0, 3) ? QByteArray::number(number(0, 100'000)) : odd[number(0, int(std::size(odd)) - 1)];
}

QByteArray UsageFuzz::timestamp()
{
    const char *const odd[] = {
        "\"2026-11-21T08:01:02Z\"",        "\"2026-11-21T08:01:02.5+05:30\"",    "\"2026-02-29T08:01:02.000Z\"",
        "\"2026-11-21T24:00:00.000Z\"",    "\"2026-11-21 08:01:02.345Z\"",       "1795226514492",
        "\"2026-11-20T23:59:59.999999Z\"", R"("2026-11-21T08:01:02\u002e345Z")", "\"2026-11-21T08:01:02.345\""};
    if (!number(0, 3))
        return odd[number(0, int(std::size(odd)) - 1)];
    const QDateTime at(QDate(2026, 11, 20 + number(0, 1)), QTime(number(0, 23), number(0, 59), number(0, 59), number(0, 999)),
                       Qt::UTC);
    return '"' + at.toString(Qt::ISODateWithMs).toLatin1() + '"';
}

QByteArray UsageFuzz::usage()
{
    if (!number(0, 9))
        return value(0);
    const char *const names[] = {
        "input_tokens",         "output_tokens", "cache_read_input_tokens", "cache_creation_input_tokens",
        R"(input\u005ftokens)", "speed"};
    QByteArrayList fields;
    for (int i = number(0, 7); i > 0; --i)
        fields << '"' + QByteArray(names[number(0, 5)]) + "\": " + (number(0, 9) ? count() : value(2));
    return '{' + fields.join(',') + '}';
}

void UsageFuzz::damage(QByteArray &line)
{
    const QByteArrayView letters("\"\\{}[]:,0e.-u \t\x01\xff\xc3t/");
    for (int i = number(1, 3); i > 0 && !line.isEmpty(); --i) {
        const int at = number(0, int(line.size()) - 1);
        switch (number(0, 4)) {
        case 0:
            line.truncate(at);
            break;
        case 1:
            line.remove(at, number(1, 3));
            break;
        case 2:
            line.insert(at, letters[number(0, int(letters.size()) - 1)]);
            break;
        case 3:
            line[at] = letters[number(0, int(letters.size()) - 1)];
            break;
        default:
            line += line.left(at);
            break;
        }
    }
}

} // namespace velto
