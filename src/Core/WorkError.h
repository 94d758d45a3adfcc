#pragma once

#include <QString>

namespace velto {

/// Why reading from a service failed, in words for the user. Thrown inside coroutines and caught there; never holds a token.
struct WorkError {
    QString errorDescription;
};

} // namespace velto
