#pragma once

#include "Shell/QuestionText.h"

namespace velto {

/// Enough to compare 500 lines with 500 others, in a millisecond or so.
constexpr qsizetype kMostCompared = 250'000;

/// The difference between two texts, line by line: what stays, goes and comes, as parts. The comparison costs the product of
/// their line counts, which is taken from `effort`; where that isn't enough, every line goes and comes.
QList<QuestionPart> difference(const QString &before, const QString &after, qsizetype &effort);

} // namespace velto
