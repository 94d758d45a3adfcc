#pragma once

namespace velto {

// What kinds of characters there are, as Visible needs to tell them apart, by the tables of Unicode that Qt has. Any thread.

bool isEmoji(char32_t c);
/// Of a script whose letters may be told apart by a joiner between them: Arabic and its kin, and those of India.
bool isJoinedLetter(char32_t c);
bool isRightToLeft(char32_t c);
/// A blank that only looks other than the usual one.
bool isWideBlank(char32_t c);
/// Shows nothing, or changes how something else shows.
bool isHidden(char32_t c);
/// Strikes a letter out, or draws a sign around it.
bool coversItsLetter(char32_t c);

} // namespace velto
