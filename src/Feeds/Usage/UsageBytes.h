#pragma once

namespace velto {

/// The first place that may belong to a line of the model: the word "assistant" as a JSON string, or an escaped letter, which
/// may spell it. `end` if there is none: then no line in these bytes is one of the model.
const char *findUsageHint(const char *begin, const char *end);

/// Whether each backslash begins an escape that JSON knows.
bool areEscapesValid(const char *begin, const char *end);

} // namespace velto
