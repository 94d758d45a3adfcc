#include "Design/LineValidator.h"

#include "Core/Characters.h"

namespace velto {

namespace {

/// Half a second with them, in a program that isn't optimized.
constexpr int kMostPieces = 8000;

/// What is drawn in one piece with its like. Other values than these are a script's.
enum Kind { Plain = -3, Emoji, Steering };

int kindOf(char32_t c, int before)
{
    switch (const QChar::Script script = QChar::script(c)) {
    case QChar::Script_Latin:
    case QChar::Script_Greek:
    case QChar::Script_Cyrillic:
        return Plain;
    case QChar::Script_Inherited:
    case QChar::Script_Common:
        if (isHidden(c) || (c >= 0xFE00 && c <= 0xFE0F))
            return Steering;
        if (QChar::isMark(c))
            return before;
        return isEmoji(c) ? Emoji : Plain;
    default:
        return script;
    }
}

bool isShort(const QString &text)
{
    int pieces = 0;
    int before = Plain;
    for (qsizetype i = 0; i < text.size() && pieces <= kMostPieces; ++i) {
        char32_t c = text[i].unicode();
        if (text[i].isHighSurrogate() && i + 1 < text.size()) {
            ++i;
            c = QChar::surrogateToUcs4(text[i - 1], text[i]);
        }
        const int kind = c == U'\n' ? Plain : kindOf(c, before);
        if (kind != before || c == U'\t')
            ++pieces;
        before = kind;
    }
    return pieces <= kMostPieces;
}

} // namespace

QValidator::State LineValidator::validate(QString &text, int &) const
{
    if (isShort(text))
        return Acceptable;
    Q_EMIT refused();
    return Invalid;
}

} // namespace velto
