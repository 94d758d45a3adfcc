#pragma once

#include "Core/Peek.h"

#include <QList>

namespace velto {

/// What the row says of a question, fit to be shown. Each part is one line and complete in itself.
struct QuestionLine {
    QString session;
    QString tool;
    QString detail; ///< what the tool would do; empty if nothing was given
    QString place; ///< the folder of the file that `detail` names, unless it is the session's own
    bool exact = true; ///< the detail is a command, a path or the like, not words

    bool operator==(const QuestionLine &) const = default;
};

/// A part of the whole question, as it came. It isn't fit to be shown yet: see visibleLines().
struct QuestionPart {
    enum class Look : int { Words, Exact, Removed, Added };

    QString label; ///< our own word for it; empty in the middle of a part
    QString text;
    Look look = Look::Exact;
    bool beside = true; ///< the label stands beside the text, else above it

    bool operator==(const QuestionPart &) const = default;
};

QuestionLine questionLine(const Question &question);

/// The whole question: first what would be done, then who asks.
QList<QuestionPart> questionParts(const Question &question);

} // namespace velto
