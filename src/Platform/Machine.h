#pragma once

#include <QString>

namespace velto {

/// What this machine says of itself.
class Machine {
public:
    Machine() = default;
    Machine(const Machine &) = delete;
    Machine &operator=(const Machine &) = delete;
    virtual ~Machine() = default;

    /// The name that its user gave it, as it is now; empty if it has none. Quick enough for the UI thread.
    virtual QString displayName() const = 0;
};

} // namespace velto
