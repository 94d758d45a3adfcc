#include "Shell/QuestionRows.h"

#include "Core/Visible.h"

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// Roughly how many characters the mark for an invisible one takes.
constexpr qsizetype kMark = 8;

/// The end of the piece that starts here: after so many lines or shown characters, but never within a run of blanks or of
/// invisible characters, which would be counted in two places.
qsizetype endOfPiece(QStringView text, qsizetype start)
{
    qsizetype lines = 0;
    qsizetype shown = 0;
    qsizetype end = start;
    while (end < text.size()) {
        const QChar c = text.at(end++);
        lines += c == u'\n';
        shown += c.isPrint() || c == u'\n' ? 1 : kMark;
        const bool full = lines >= QuestionRows::kMostLines || shown >= QuestionRows::kMostCharacters;
        const bool inRun = end < text.size() && text.at(end) == c && (c.isSpace() || !c.isPrint());
        if (full && !inRun && !c.isHighSurrogate())
            break;
    }
    return end;
}

/// A field stands apart from the next, and so does a part with a heading; the parts of a difference don't.
bool standsApart(const QuestionPart &part, const QuestionPart &next)
{
    return part.beside || next.beside || !next.label.isEmpty();
}

} // namespace

void QuestionRows::set(const QList<QuestionPart> &parts)
{
    beginResetModel();
    m_parts = parts;
    m_pieces.clear();
    for (qsizetype part = 0; part < m_parts.size(); ++part) {
        const QStringView text = m_parts.at(part).text;
        bool continued = false;
        qsizetype start = 0;
        do {
            const qsizetype end = endOfPiece(text, start);
            const bool closed = end > start && end < text.size() && text.at(end - 1) == u'\n';
            m_pieces.append({part, start, end - start - (closed ? 1 : 0), continued});
            continued = !closed;
            start = end;
        } while (start < text.size());
    }
    endResetModel();
}

QString QuestionRows::told() const
{
    QStringList told;
    qsizetype room = kMostTold;
    for (const QuestionPart &part : m_parts) {
        if (room <= 0) {
            told.append(u"…"_s);
            break;
        }
        const Wording wording = part.look == QuestionPart::Look::Words ? Wording::Prose : Wording::Exact;
        const QString words = visibleLines(part.text, wording, room);
        const QString change = part.look == QuestionPart::Look::Removed ? tr("Removed")
            : part.look == QuestionPart::Look::Added                    ? tr("Added")
                                                                        : QString();
        QStringList line{part.label, change, words};
        line.removeAll(QString());
        told.append(line.join(u": "_s));
        room -= words.size();
    }
    return told.join(u'\n');
}

int QuestionRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_pieces.size());
}

QVariant QuestionRows::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Piece &piece = m_pieces.at(index.row());
    const QuestionPart &part = m_parts.at(piece.part);
    switch (role) {
    case Label:
        return piece.start == 0 ? part.label : QString();
    case Text: {
        constexpr qsizetype kWhole = 1'000'000;
        const Wording wording = part.look == QuestionPart::Look::Words ? Wording::Prose : Wording::Exact;
        return visibleLines(QStringView(part.text).sliced(piece.start, piece.length), wording, kWhole);
    }
    case Look:
        return int(part.look);
    case Beside:
        return part.beside;
    case Continued:
        return piece.continued;
    case Begins:
        return piece.start == 0 && (piece.part == 0 || standsApart(m_parts.at(piece.part - 1), part));
    case Ends: {
        const bool whole = piece.start + piece.length >= part.text.size();
        const qsizetype next = piece.part + 1;
        return whole && (next == m_parts.size() || standsApart(part, m_parts.at(next)));
    }
    default:
        return {};
    }
}

QHash<int, QByteArray> QuestionRows::roleNames() const
{
    return {{Label, "label"},         {Text, "words"},    {Look, "look"}, {Beside, "beside"},
            {Continued, "continued"}, {Begins, "begins"}, {Ends, "ends"}};
}

} // namespace velto
