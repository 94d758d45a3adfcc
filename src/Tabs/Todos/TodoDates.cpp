#include "Tabs/Todos/TodoDates.h"

#include "Tabs/Todos/Todo.h"

#include <QList>
#include <algorithm>

using namespace Qt::StringLiterals;

// The toolkit knows a long and a short form of dates in each language; the form wanted here is neither. It is made from the
// long one, "dddd, MMMM d, yyyy": a field is left out together with the text that joins it to the rest, and names are
// shortened.

namespace velto {

namespace {

/// A run of one field's letter, or the text between two fields.
struct Piece {
    QString text;
    bool isField = false;
};

QList<Piece> piecesOf(const QString &format)
{
    QList<Piece> pieces;
    bool quoted = false;
    QChar last;
    for (const QChar c : format) {
        if (c == u'\'')
            quoted = !quoted;
        const bool isField = !quoted && (c == u'd' || c == u'M' || c == u'y');
        const bool goesOn = !pieces.isEmpty() && pieces.back().isField == isField && (!isField || c == last);
        if (!goesOn)
            pieces.append({{}, isField});
        pieces.back().text += c;
        last = c;
    }
    return pieces;
}

QList<Piece> longForm(const QLocale &locale)
{
    return piecesOf(locale.dateFormat(QLocale::LongFormat));
}

/// The part of the text between two fields that belongs to the first: a sign after the day's number, but not ", ".
QString ownEnd(const Piece &piece)
{
    const auto isTie = [](QChar c) { return c.isSpace() || c == u','; };
    return piece.text.left(std::ranges::find_if(piece.text, isTie) - piece.text.begin());
}

/// Removes a field with the text that joins it: the text before it or, for the first field, the text after it.
template <typename IsDropped> QList<Piece> without(QList<Piece> pieces, IsDropped isDropped)
{
    const auto isField = [](const Piece &piece) { return piece.isField; };
    const auto found = std::ranges::find_if(pieces, [&](const Piece &piece) { return piece.isField && isDropped(piece.text); });
    if (found == pieces.end())
        return pieces;
    const qsizetype place = found - pieces.begin();
    if (std::none_of(pieces.begin(), found, isField)) {
        pieces.remove(0, std::min(place + 2, pieces.size()));
        return pieces;
    }
    const bool isLast = std::none_of(found + 1, pieces.end(), isField);
    pieces.remove(place, isLast ? pieces.size() - place : 1);
    if (Piece &before = pieces[place - 1]; !before.isField)
        before.text = ownEnd(before);
    return pieces;
}

/// Puts the format together again, with its names shortened.
QString formatOf(const QList<Piece> &pieces)
{
    QString format;
    for (const Piece &piece : pieces) {
        const bool isName = piece.isField && piece.text.size() > 3 && !piece.text.startsWith(u'y');
        format += isName ? piece.text.first(3) : piece.text;
    }
    return format;
}

} // namespace

QString shortDate(const QString &text, const QLocale &locale)
{
    const QDate day = dayOf(text);
    if (!day.isValid())
        return text;
    return locale.toString(day, formatOf(without(longForm(locale), [](const QString &field) { return field.startsWith(u'y'); })));
}

QString shortDateTime(const QDateTime &time, const QLocale &locale)
{
    const QDateTime local = time.toLocalTime();
    const auto isWeekday = [](const QString &field) { return field.startsWith("ddd"_L1); };
    // The C locale's form of times shows seconds.
    const QString form = locale.language() == QLocale::C ? u"HH:mm"_s : locale.timeFormat(QLocale::ShortFormat);
    return locale.toString(local.date(), formatOf(without(longForm(locale), isWeekday))) + ", "_L1
        + locale.toString(local.time(), form);
}

} // namespace velto
