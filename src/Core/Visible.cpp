#include "Core/Visible.h"

#include "Core/Characters.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qsizetype kMostBlanks = 3;
constexpr qsizetype kMostIndent = 40;
constexpr qsizetype kMostEmptyLines = 2;
constexpr int kMostCombining = 3;

constexpr char32_t kJoiner = 0x200D;
constexpr char32_t kNonJoiner = 0x200C;
constexpr char32_t kTextStyle = 0xFE0E;
constexpr char32_t kEmojiStyle = 0xFE0F;
constexpr char32_t kKeycap = 0x20E3;
constexpr QChar kLeftToRight(0x200E);
constexpr QChar kIsolate(0x2066);
constexpr QChar kEndOfIsolate(0x2069);

/// The common case: printable ASCII with single blanks.
bool isPlain(QStringView text, qsizetype longest)
{
    bool afterBlank = false;
    for (const QChar c : text) {
        const bool blank = c == u' ';
        if (c < u' ' || c > u'~' || (blank && afterBlank))
            return false;
        afterBlank = blank;
    }
    return text.size() <= longest;
}

/// Reads code point by code point; a lone surrogate comes as itself.
class Reader {
public:
    explicit Reader(QStringView text)
        : m_text(text)
    {
    }
    bool more() const { return m_index < m_text.size(); }
    qsizetype index() const { return m_index; }
    QStringView between(qsizetype start) const { return m_text.sliced(start, m_index - start); }
    /// The next one, not consumed; 0 at the end.
    char32_t ahead() const { return more() ? at(m_index) : 0; }
    char32_t next()
    {
        const char32_t c = at(m_index);
        m_index += QChar::requiresSurrogates(c) ? 2 : 1;
        return c;
    }

private:
    char32_t at(qsizetype index) const
    {
        const QChar c = m_text.at(index);
        if (c.isHighSurrogate() && index + 1 < m_text.size() && m_text.at(index + 1).isLowSurrogate())
            return QChar::surrogateToUcs4(c, m_text.at(index + 1));
        return c.unicode();
    }

    QStringView m_text;
    qsizetype m_index = 0;
};

class Writer {
public:
    Writer(QStringView text, Wording wording, bool keepBreaks, qsizetype longest)
        : m_text(text)
        , m_exact(wording == Wording::Exact)
        , m_keepBreaks(keepBreaks)
        , m_longest(longest)
    {
        m_result.reserve(std::min(text.size(), longest) + 8);
    }

    QString write()
    {
        while (m_text.more() && m_result.size() <= m_longest)
            one(m_text.next());
        setDirection(false);
        const bool cut = m_text.more() || m_result.size() > m_longest;
        if (cut)
            cutAt(m_longest - 1);
        if (m_turned && !m_exact)
            isolate();
        return m_result;
    }

private:
    /// How many like `c` follow one another, including the one just read.
    template <typename Like> qsizetype run(Like like)
    {
        qsizetype count = 1;
        for (; m_text.more() && like(m_text.ahead()); ++count)
            m_text.next();
        return count;
    }

    void one(char32_t c)
    {
        const bool usual = c > U' ' && c < 0x7F;
        if (usual || (!isBreak(c) && c != U'\t' && !blank(c) && !isHidden(c) && !QChar::isMark(c)))
            letter(c);
        else if (isBreak(c))
            breaks(c);
        else if (c == U'\t' || blank(c))
            blanks(c);
        else if (QChar::isMark(c) && !isHidden(c))
            combining(c);
        else
            hidden(c);
    }

    /// To a shell a carriage return isn't a line break.
    bool isBreak(char32_t c) const { return c == U'\n' || (!m_exact && c == U'\r'); }
    bool blank(char32_t c) const { return c == U' ' || (!m_exact && isWideBlank(c)); }

    void letter(char32_t c)
    {
        setDirection(isRightToLeft(c));
        append(c);
        m_last = c;
        m_combined = 0;
        m_lineStart = false;
    }

    void breaks(char32_t c)
    {
        setDirection(false);
        const auto swallow = [this](char32_t first) {
            if (first == U'\r' && m_text.ahead() == U'\n')
                m_text.next();
        };
        swallow(c);
        qsizetype count = 1;
        for (; m_text.more() && isBreak(m_text.ahead()); ++count)
            swallow(m_text.next());
        if (!m_keepBreaks) {
            m_result += count > 1 ? u" ⏎×%1 "_s.arg(count) : u" ⏎ "_s;
        } else if (count > kMostEmptyLines + 1) {
            m_result += u"\n‹⏎×%1›\n"_s.arg(count - 1);
        } else {
            m_result += QString(count, u'\n');
        }
        ended(true);
    }

    void blanks(char32_t c)
    {
        setDirection(false);
        const qsizetype start = m_text.index();
        const qsizetype count = run([this](char32_t other) { return other == U'\t' || blank(other); });
        const bool indents = m_keepBreaks && m_lineStart && count <= kMostIndent;
        if (count > kMostBlanks && !indents) {
            m_result += u"‹␣×%1›"_s.arg(count);
        } else {
            append(c == U'\t' && !m_keepBreaks ? U' ' : c);
            for (const QChar other : m_text.between(start))
                m_result += other == u'\t' && !m_keepBreaks ? QChar(u' ') : other;
        }
        ended(m_lineStart);
    }

    void combining(char32_t c)
    {
        if (m_last != 0 && m_combined < kMostCombining && !(m_exact && coversItsLetter(c))) {
            ++m_combined;
            append(c);
            return;
        }
        const qsizetype count = run([](char32_t other) { return QChar::isMark(other) && !isHidden(other); });
        mark(u"◌"_s, count);
    }

    void hidden(char32_t c)
    {
        if (!m_exact && joins(c)) {
            append(c);
            return;
        }
        const qsizetype count = run([c](char32_t other) { return other == c; });
        mark("U+"_L1 + QString::number(uint(c), 16).toUpper().rightJustified(4, u'0'), count);
    }

    /// Whether this belongs to the character before it: an emoji's style or part, or a joiner within a word.
    bool joins(char32_t c)
    {
        const char32_t after = m_text.ahead();
        if (c == kTextStyle || c == kEmojiStyle) // once: a row of them would say something that nobody sees
            return !hasStyle() && (isEmoji(m_last) || (c == kEmojiStyle && after == kKeycap));
        if (c == kJoiner && isEmoji(m_last))
            return isEmoji(after);
        return (c == kJoiner || c == kNonJoiner) && isJoinedLetter(m_last) && isJoinedLetter(after);
    }

    bool hasStyle() const
    {
        return m_result.endsWith(QChar(char16_t(kTextStyle))) || m_result.endsWith(QChar(char16_t(kEmojiStyle)));
    }

    void mark(const QString &name, qsizetype count)
    {
        setDirection(false);
        m_result += count > 1 ? u"‹%1×%2›"_s.arg(name).arg(count) : u"‹%1›"_s.arg(name);
        ended(false);
    }

    void ended(bool lineStart)
    {
        m_last = 0;
        m_combined = 0;
        m_lineStart = lineStart;
    }

    /// In an exact text, left-to-right marks surround each right-to-left run, so that the blanks, signs and numbers beside it
    /// stay in place.
    void setDirection(bool rightToLeft)
    {
        m_turned = m_turned || rightToLeft;
        if (rightToLeft == std::exchange(m_inTurned, rightToLeft) || !m_exact)
            return;
        m_result += kLeftToRight;
    }

    void append(char32_t c)
    {
        if (QChar::requiresSurrogates(c)) {
            m_result += QChar(QChar::highSurrogate(c));
            m_result += QChar(QChar::lowSurrogate(c));
        } else {
            m_result += QChar(char16_t(c));
        }
    }

    /// An isolate ends with its line, so each line gets its own.
    void isolate()
    {
        m_result.replace(u'\n', QString(kEndOfIsolate) + u'\n' + kIsolate);
        m_result = kIsolate + m_result + kEndOfIsolate;
    }

    void cutAt(qsizetype length)
    {
        length = std::clamp<qsizetype>(length, 0, m_result.size());
        if (length > 0 && m_result.at(length - 1).isHighSurrogate())
            --length;
        m_result.truncate(length);
        // The marks around right-to-left words go in pairs.
        if (m_exact && m_result.count(kLeftToRight) % 2 != 0)
            m_result += kLeftToRight;
        m_result += u'…';
    }

    Reader m_text;
    bool m_exact;
    bool m_keepBreaks;
    qsizetype m_longest;
    QString m_result;
    char32_t m_last = 0; ///< what a combining mark would stand on; 0 if nothing
    int m_combined = 0;
    bool m_lineStart = true;
    bool m_turned = false; ///< something is written from right to left
    bool m_inTurned = false;
};

} // namespace

QString visibleLine(QStringView text, Wording wording, qsizetype longest)
{
    if (isPlain(text, longest))
        return text.toString();
    return Writer(text, wording, false, longest).write();
}

QString visibleLines(QStringView text, Wording wording, qsizetype longest)
{
    return Writer(text, wording, true, longest).write();
}

} // namespace velto
