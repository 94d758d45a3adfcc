#include "Shell/TextDifference.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace velto {

namespace {

using Lines = QList<QStringView>;

/// Each line as a number, the same for equal lines: they are compared many times.
QList<int> numbered(const Lines &lines, QHash<QStringView, int> &numbers)
{
    QList<int> result;
    for (const QStringView line : lines) {
        int &number = numbers[line];
        if (number == 0)
            number = int(numbers.size());
        result.append(number);
    }
    return result;
}

/// The middle part of two texts as runs of lines that differ or not: the longest common subsequence, worked out from the end.
template <typename Put> void compare(const Lines &before, const Lines &after, qsizetype &effort, Put put)
{
    using Look = QuestionPart::Look;
    const qsizetype rows = before.size();
    const qsizetype columns = after.size();
    const bool compared = rows * columns <= effort;
    effort -= compared ? rows * columns : 0;
    QHash<QStringView, int> numbers;
    const QList<int> from = numbered(before, numbers);
    const QList<int> to = numbered(after, numbers);
    std::vector<quint16> common(compared ? std::size_t((rows + 1) * (columns + 1)) : 0);
    const auto at = [&](qsizetype row, qsizetype column) -> quint16 & {
        return common[std::size_t(row * (columns + 1) + column)];
    };
    for (qsizetype row = compared ? rows - 1 : -1; row >= 0; --row) {
        for (qsizetype column = columns - 1; column >= 0; --column)
            at(row, column) = from[row] == to[column] ? quint16(at(row + 1, column + 1) + 1)
                                                      : std::max(at(row + 1, column), at(row, column + 1));
    }
    qsizetype row = 0;
    qsizetype column = 0;
    while (row < rows || column < columns) {
        if (compared && row < rows && column < columns && from[row] == to[column]) {
            put(Look::Exact, before[row]);
            ++row;
            ++column;
        } else if (row < rows && (!compared || column == columns || at(row + 1, column) >= at(row, column + 1))) {
            put(Look::Removed, before[row++]);
        } else {
            put(Look::Added, after[column++]);
        }
    }
}

} // namespace

QList<QuestionPart> difference(const QString &before, const QString &after, qsizetype &effort)
{
    // A line break at the end of both doesn't begin another line.
    const bool closed = (before.isEmpty() || before.endsWith(u'\n')) && (after.isEmpty() || after.endsWith(u'\n'));
    const auto linesOf = [closed](const QString &text) {
        return text.isEmpty() ? Lines() : QStringView(text).chopped(closed ? 1 : 0).split(u'\n');
    };
    const Lines from = linesOf(before);
    const Lines to = linesOf(after);
    const auto head = std::mismatch(from.begin(), from.end(), to.begin(), to.end()).first - from.begin();
    const auto room = std::min(from.size(), to.size()) - head;
    qsizetype tail = 0;
    while (tail < room && from[from.size() - 1 - tail] == to[to.size() - 1 - tail])
        ++tail;

    QList<QuestionPart> parts;
    const auto put = [&parts](QuestionPart::Look look, QStringView line) {
        if (parts.isEmpty() || parts.last().look != look) {
            parts.append({{}, line.toString(), look, false});
        } else {
            parts.last().text += u'\n';
            parts.last().text += line;
        }
    };
    for (qsizetype i = 0; i < head; ++i)
        put(QuestionPart::Look::Exact, from[i]);
    compare(from.sliced(head, from.size() - head - tail), to.sliced(head, to.size() - head - tail), effort, put);
    for (qsizetype i = from.size() - tail; i < from.size(); ++i)
        put(QuestionPart::Look::Exact, from[i]);
    return parts;
}

} // namespace velto
