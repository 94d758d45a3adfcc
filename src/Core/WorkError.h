#pragma once

#include <QString>

namespace velto {

/// Why a reader of a service gave up, in words for the user. Thrown inside coroutines and caught there; never holds a token.
struct WorkError {
    QString errorDescription;
};

} // namespace velto
