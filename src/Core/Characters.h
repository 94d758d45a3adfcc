#pragma once

namespace velto {

// Classes of characters that Visible needs to tell apart, by Qt's Unicode tables. Any thread.

bool isEmoji(char32_t c);
/// A letter or mark of a script in which a joiner may tell words apart: Arabic and related ones, and those of India.
bool isJoinedLetter(char32_t c);
bool isRightToLeft(char32_t c);
/// A blank that differs from the usual one only in how it looks.
bool isWideBlank(char32_t c);
/// Shows nothing, or changes how something else is shown.
bool isHidden(char32_t c);
/// Strikes a letter out, or draws a sign around it.
bool coversItsLetter(char32_t c);

} // namespace velto
