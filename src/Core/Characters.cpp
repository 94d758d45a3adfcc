#include "Core/Characters.h"

#include <QChar>

#include <algorithm>
#include <initializer_list>

namespace velto {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

bool within(char32_t c, std::initializer_list<Range> ranges)
{
    return std::ranges::any_of(ranges, [c](const Range &range) { return c >= range.first && c <= range.last; });
}

} // namespace

bool isEmoji(char32_t c)
{
    return QChar::category(c) == QChar::Symbol_Other || within(c, {{0x1F000, 0x1FAFF}, {0x2190, 0x21FF}, {0x2139, 0x2139}});
}

bool isJoinedLetter(char32_t c)
{
    const QChar::Script script = QChar::script(c);
    return (QChar::isLetter(c) || QChar::isMark(c))
        && (script == QChar::Script_Arabic || script == QChar::Script_Syriac || script == QChar::Script_Mongolian
            || (script >= QChar::Script_Devanagari && script <= QChar::Script_Sinhala));
}

bool isRightToLeft(char32_t c)
{
    const QChar::Direction direction = QChar::direction(c);
    return direction == QChar::DirR || direction == QChar::DirAL || direction == QChar::DirAN;
}

bool isWideBlank(char32_t c)
{
    return c == 0x00A0 || c == 0x202F || c == 0x3000;
}

bool isHidden(char32_t c)
{
    switch (QChar::category(c)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    case QChar::Other_NotAssigned:
        return !within(c, {{0x1F000, 0x1FAFF}}); // emoji of later Unicode versions
    case QChar::Separator_Space:
        return c != U' ';
    default:
        break;
    }
    return within(c,
                  {{0x034F, 0x034F}, // grapheme joiner
                   {0x115F, 0x1160}, // Hangul fillers
                   {0x17B4, 0x17B5}, // Khmer vowels that show nothing
                   {0x180B, 0x180F}, // Mongolian variation selectors
                   {0x2800, 0x2800}, // Braille without a dot
                   {0x3164, 0x3164},
                   {0xFE00, 0xFE0F}, // variation selectors
                   {0xFFA0, 0xFFA0},
                   {0xFFFC, 0xFFFC}, // object replacement character
                   {0x13441, 0x13442}, // hieroglyphic blanks
                   {0x1D159, 0x1D159}, // null notehead
                   {0x16FE4, 0x16FE4},
                   {0xE0000, 0xE0FFF}}); // tags and more variation selectors
}

bool coversItsLetter(char32_t c)
{
    constexpr int kOverlay = 1; // Canonical_Combining_Class
    return QChar::combiningClass(c) == kOverlay || QChar::category(c) == QChar::Mark_Enclosing;
}

} // namespace velto
