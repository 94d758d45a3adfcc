#pragma once

#include <QString>

namespace velto {

/// What a text from outside is, and so how strictly it is shown.
enum class Wording : quint8 {
    Prose, ///< names, titles, messages: joined emoji, joiners between letters of a script that needs them, wide blanks stay
    Exact, ///< commands, paths, arguments: nothing invisible stays, and words keep their order
};

/// The one place that makes text from outside fit to be shown. Whatever shows nothing or steers the text around it (controls,
/// format characters, separators, fillers, variation selectors, private use, lone surrogates, directions, ...) becomes a mark
/// that names it, ‹U+200B›, with a number if there are several. So do long runs of blanks, ‹␣×59›, and piles of combining marks,
/// ‹◌×12›. Right-to-left words can't reorder the text beside them. Plain text comes back as it is. Any thread.
///
/// On one line: a line break is ⏎. What is cut at `longest` characters ends in "…".
QString visibleLine(QStringView text, Wording wording = Wording::Prose, qsizetype longest = 1000);

/// On several lines: line breaks stay, tabs and blanks too at the start of a line, as far as they indent it; a long run of empty
/// lines becomes a mark.
QString visibleLines(QStringView text, Wording wording = Wording::Prose, qsizetype longest = 50'000);

} // namespace velto
