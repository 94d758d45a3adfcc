// Any text from outside: once it is made fit to be shown, nothing in it is hidden, turns what stands beside it, or breaks a line,
// and it is no longer than was asked for.

#include "Core/Characters.h"
#include "Core/Visible.h"

#include <QList>
#include <cstdlib>

namespace {

constexpr char32_t kJoiner = 0x200D;
constexpr char32_t kNonJoiner = 0x200C;
constexpr char32_t kEmojiStyle = 0xFE0F;
constexpr char32_t kLeftToRight = 0x200E;
constexpr char32_t kIsolate = 0x2066;
constexpr char32_t kEndOfIsolate = 0x2069;
constexpr int kMostIndent = 40;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// What makes no difference to a reader, or none that is seen.
bool isUnseen(char32_t c)
{
    switch (QChar::category(c)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return c == kEmojiStyle;
    }
}

/// A name or a message: what joins two signs stands between them, once; and right-to-left words stay within their line.
void requireProse(const QString &text, bool lines)
{
    char32_t before = 0;
    bool isolated = false;
    const auto characters = text.toUcs4();
    for (const char32_t c : characters) {
        if (c == kIsolate || c == kEndOfIsolate) {
            require(isolated == (c == kEndOfIsolate));
            isolated = !isolated;
        } else if (isUnseen(c)) {
            const bool joins = c == kJoiner || c == kNonJoiner || c == kEmojiStyle;
            require(joins ? c != before : lines && (c == U'\n' || c == U'\t'));
        }
        require(!velto::isRightToLeft(c) || isolated);
        before = c;
    }
    require(!isolated);
}

/// A command: all of it is seen, and each right-to-left word stands between marks of the other direction.
void requireExact(const QString &text, bool lines)
{
    bool turned = false;
    const auto characters = text.toUcs4();
    for (const char32_t c : characters) {
        if (c == kLeftToRight) {
            turned = !turned;
        } else {
            require(!isUnseen(c) || (lines && (c == U'\n' || c == U'\t')));
            require(turned == velto::isRightToLeft(c) || QChar::isMark(c));
        }
    }
    require(!turned);
}

void requireNoGap(const QString &text)
{
    int blanks = 0;
    for (const QChar c : text) {
        blanks = c == u' ' || c == u'\t' ? blanks + 1 : 0;
        require(blanks <= kMostIndent + 3);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    if (size < 2)
        return 0;
    // Half characters too, which no UTF-8 holds.
    const QString text = data[0] % 2 ? QString::fromUtf8(reinterpret_cast<const char *>(data + 2), qsizetype(size - 2))
                                     : QString(reinterpret_cast<const QChar *>(data + 2), qsizetype(size - 2) / 2);
    const qsizetype longest = 1 + data[1];
    const QString line = velto::visibleLine(text, velto::Wording::Prose, longest);
    const QString exactLine = velto::visibleLine(text, velto::Wording::Exact, longest);
    const QString lines = velto::visibleLines(text, velto::Wording::Prose, longest);
    const QString exactLines = velto::visibleLines(text, velto::Wording::Exact, longest);
    requireProse(line, false);
    requireProse(lines, true);
    requireExact(exactLine, false);
    requireExact(exactLines, true);
    for (const QString &each : {line, lines, exactLine, exactLines}) {
        requireNoGap(each);
        require(each.isEmpty() == text.isEmpty());
    }
    require(line.size() <= longest + 2 && exactLine.size() <= longest + 1); // with the marks of a direction around it
    return 0;
}
