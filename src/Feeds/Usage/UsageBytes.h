#pragma once

namespace velto {

/// The first place from which a line of the model's may show: the word "assistant" as a JSON string, or an escaped letter, which
/// may spell it. `end` if there is none: then no line in these bytes is the model's.
const char *findUsageHint(const char *begin, const char *end);

/// Whether each backslash begins an escape that JSON knows.
bool areEscapesValid(const char *begin, const char *end);

} // namespace velto
