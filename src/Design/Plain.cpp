#include "Design/Plain.h"

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qsizetype kLongestLine = 1000;
constexpr qsizetype kLongestText = 50000;

/// Embeddings, overrides and isolates: a name that holds one could make "Deny" read as something else.
bool turnsDirection(QChar c)
{
    return (c >= u'\u202A' && c <= u'\u202E') || (c >= u'\u2066' && c <= u'\u2069');
}

bool breaksLine(QChar c)
{
    return c == u'\n' || c == u'\u2028' || c == u'\u2029';
}

QString cleaned(const QString &text, qsizetype longest, bool keepBreaks)
{
    QString result;
    result.reserve(qMin(text.size(), longest));
    for (const QChar c : text) {
        if (result.size() >= longest)
            break;
        if (turnsDirection(c) || c == u'\uFEFF')
            continue;
        if (breaksLine(c))
            result += keepBreaks ? u'\n' : u' ';
        else if (c == u'\r' && keepBreaks)
            continue;
        else
            result += c.category() == QChar::Other_Control ? QChar(u' ') : c;
    }
    if (!result.isEmpty() && result.back().isHighSurrogate())
        result.chop(1);
    return result;
}

} // namespace

QString plainLine(const QString &text)
{
    return cleaned(text, kLongestLine, false);
}

QString plainLines(const QString &text)
{
    return cleaned(text, kLongestText, true);
}

} // namespace velto
