#include "Hooks/SettingsOutline.h"

#include <QCoreApplication>
#include <algorithm>
#include <optional>
#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr int kDeepest = 512;
constexpr int kIndent = 2;

void appendLine(QByteArray &out, int depth)
{
    out.append('\n');
    out.append(kIndent * depth, ' ');
}

/// The lone surrogate that these three bytes stand for: the parser writes one so, which isn't valid UTF-8.
std::optional<char16_t> loneSurrogate(QByteArrayView text)
{
    if (text.size() < 3 || quint8(text[0]) != 0xED || quint8(text[1]) < 0xA0)
        return std::nullopt;
    return char16_t(0xD000 | ((quint8(text[1]) & 0x3F) << 6) | (quint8(text[2]) & 0x3F));
}

/// Takes the parser's events. The outer levels become nodes; below them each event is printed at once.
class Outliner : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Outliner> {
public:
    SettingsNode takeRoot() { return std::move(m_root); }
    bool tooDeep() const { return m_depth > kDeepest; }

    bool Null() { return scalar("null"); }
    bool Bool(bool value) { return scalar(value ? "true" : "false"); }
    bool RawNumber(const char *digits, rapidjson::SizeType size, bool) { return scalar(QByteArrayView(digits, size)); }
    bool String(const char *text, rapidjson::SizeType size, bool)
    {
        appendQuoted(begin(), QByteArrayView(text, size));
        return true;
    }
    bool Key(const char *text, rapidjson::SizeType size, bool)
    {
        if (m_textDepth == 0) {
            m_key = QByteArray(text, size);
            return true;
        }
        appendQuoted(begin(), QByteArrayView(text, size));
        m_text->append(": ");
        m_afterKey = true;
        return true;
    }
    bool StartObject() { return open(SettingsNode::Kind::Object, '{'); }
    bool EndObject(rapidjson::SizeType) { return close('{', '}'); }
    bool StartArray() { return open(SettingsNode::Kind::Array, '['); }
    bool EndArray(rapidjson::SizeType) { return close('[', ']'); }

private:
    bool isOutlined(SettingsNode::Kind kind) const
    {
        switch (m_open.size()) {
        case 0:
            return kind == SettingsNode::Kind::Object;
        case 1:
            return kind == SettingsNode::Kind::Object && m_key == "hooks";
        case 2:
            return kind == SettingsNode::Kind::Array;
        default:
            return false;
        }
    }

    SettingsNode &addNode()
    {
        if (m_open.empty())
            return m_root;
        SettingsNode &node = m_open.back()->children.emplace_back();
        node.key = std::exchange(m_key, {});
        return node;
    }

    /// Where the next value, or the next key within a text, is printed.
    QByteArray &begin()
    {
        if (m_textDepth == 0) {
            m_text = &addNode().text;
        } else if (!std::exchange(m_afterKey, false)) {
            if (!m_text->endsWith('{') && !m_text->endsWith('['))
                m_text->append(',');
            appendLine(*m_text, m_depth);
        }
        return *m_text;
    }

    bool scalar(QByteArrayView text)
    {
        begin().append(text);
        return true;
    }

    bool open(SettingsNode::Kind kind, char bracket)
    {
        if (m_textDepth == 0 && isOutlined(kind)) {
            SettingsNode &node = addNode();
            node.kind = kind;
            m_open.push_back(&node); // stays valid: the parent's list can't grow before this one is closed
        } else {
            begin().append(bracket);
            ++m_textDepth;
        }
        return ++m_depth <= kDeepest;
    }

    bool close(char opening, char closing)
    {
        --m_depth;
        if (m_textDepth == 0) {
            m_open.pop_back();
            return true;
        }
        --m_textDepth;
        if (!m_text->endsWith(opening))
            appendLine(*m_text, m_depth);
        m_text->append(closing);
        return true;
    }

    SettingsNode m_root;
    std::vector<SettingsNode *> m_open;
    QByteArray m_key; ///< of the next node
    QByteArray *m_text = nullptr; ///< of the node being printed
    int m_textDepth = 0; ///< brackets open in it
    int m_depth = 0; ///< brackets open in all
    bool m_afterKey = false;
};

QString inLine(qsizetype line, const QString &problem)
{
    return QCoreApplication::translate("SettingsEdit", "Line %1 of your Claude settings file: %2").arg(line).arg(problem);
}

qsizetype lineOfBadText(QByteArrayView json)
{
    qsizetype line = 1;
    for (qsizetype start = 0; start < json.size(); ++line) {
        const qsizetype end = json.indexOf('\n', start);
        if (!json.sliced(start, (end < 0 ? json.size() : end) - start).isValidUtf8())
            break;
        start = end < 0 ? json.size() : end + 1;
    }
    return line;
}

void print(QByteArray &out, const SettingsNode &node, int depth)
{
    if (node.kind == SettingsNode::Kind::Text) {
        out.append(node.text);
        return;
    }
    const bool isObject = node.kind == SettingsNode::Kind::Object;
    out.append(isObject ? '{' : '[');
    bool first = true;
    for (const SettingsNode &child : node.children) {
        if (!std::exchange(first, false))
            out.append(',');
        appendLine(out, depth + 1);
        if (isObject) {
            appendQuoted(out, child.key);
            out.append(": ");
        }
        print(out, child, depth + 1);
    }
    if (!node.children.empty())
        appendLine(out, depth);
    out.append(isObject ? '}' : ']');
}

bool isEscape(QByteArrayView text, QByteArrayView second, QByteArrayView third)
{
    return text.size() >= 6 && text[0] == '\\' && text[1] == 'u' && (text[2] == 'd' || text[2] == 'D') && second.contains(text[3])
        && third.contains(text[4]) && third.contains(text[5]);
}

} // namespace

std::variant<SettingsNode, QString> outlineOf(QByteArrayView json)
{
    // The parser takes a zero byte for the end, and would drop what follows it.
    if (const qsizetype zero = json.indexOf('\0'); zero >= 0)
        return inLine(json.first(zero).count('\n') + 1,
                      QCoreApplication::translate("SettingsEdit", "There is a zero byte in it."));

    // Checked before lone surrogates become bytes that aren't valid.
    if (!json.isValidUtf8())
        return inLine(lineOfBadText(json),
                      QString::fromLatin1(rapidjson::GetParseError_En(rapidjson::kParseErrorStringInvalidEncoding)));
    const QByteArray text = withHalvesAsBytes(json);
    rapidjson::MemoryStream stream(text.constData(), std::size_t(text.size()));
    rapidjson::Reader reader;
    Outliner outliner;
    constexpr unsigned kFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
    if (reader.Parse<kFlags>(stream, outliner))
        return outliner.takeRoot();

    const auto offset = std::min(qsizetype(reader.GetErrorOffset()), text.size());
    const QString problem = outliner.tooDeep() ? QCoreApplication::translate("SettingsEdit", "It is nested too deeply.")
                                               : QString::fromLatin1(rapidjson::GetParseError_En(reader.GetParseErrorCode()));
    return inLine(text.first(offset).count('\n') + 1, problem);
}

// A lone high surrogate, which the parser refuses, becomes the three bytes that it makes of a lone low one.
QByteArray withHalvesAsBytes(QByteArrayView json)
{
    constexpr QByteArrayView kDigits("0123456789abcdefABCDEF");
    QByteArray out;
    out.reserve(json.size());
    for (qsizetype i = 0; i < json.size(); ++i) {
        const auto rest = json.sliced(i);
        const bool isHalf =
            isEscape(rest, "89abAB", kDigits) && !(rest.size() >= 12 && isEscape(rest.sliced(6), "cdefCDEF", kDigits));
        if (isHalf) {
            const auto unit = rest.sliced(2, 4).toUShort(nullptr, 16);
            out.append(char(0xED)).append(char(0x80 | ((unit >> 6) & 0x3F))).append(char(0x80 | (unit & 0x3F)));
            i += 5;
        } else {
            // A backslash takes the next character with it, so that a second backslash begins no escape; so does a whole pair.
            const qsizetype length = isEscape(rest, "89abAB", kDigits) ? 12 : rest[0] == '\\' && rest.size() > 1 ? 2 : 1;
            out.append(rest.first(length));
            i += length - 1;
        }
    }
    return out;
}

QByteArray printed(const SettingsNode &root)
{
    QByteArray out;
    print(out, root, 0);
    return out;
}

void appendQuoted(QByteArray &out, QByteArrayView text)
{
    constexpr char kHex[] = "0123456789abcdef";
    out.append('"');
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (const auto unit = loneSurrogate(text.sliced(i))) {
            out.append("\\u").append(QByteArray::number(*unit, 16));
            i += 2;
            continue;
        }
        switch (c) {
        case '"':
        case '\\':
            out.append('\\').append(c);
            break;
        case '\b':
            out.append("\\b");
            break;
        case '\f':
            out.append("\\f");
            break;
        case '\n':
            out.append("\\n");
            break;
        case '\r':
            out.append("\\r");
            break;
        case '\t':
            out.append("\\t");
            break;
        default:
            if (quint8(c) < 0x20)
                out.append("\\u00").append(kHex[quint8(c) >> 4]).append(kHex[quint8(c) & 15]);
            else
                out.append(c);
        }
    }
    out.append('"');
}

} // namespace velto
