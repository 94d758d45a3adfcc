#pragma once

#include <QString>

namespace velto {

/// Whether this desktop offers something we need, and if not, why and what the user can do about it.
struct Support {
    enum class State : quint8 {
        Works,
        Denied, ///< the desktop could, but the user or another program is in the way
        Missing, ///< the desktop can't
    };

    State state = State::Works;
    QString reason; ///< a sentence for the user; may be empty

    bool works() const { return state == State::Works; }
    bool operator==(const Support &) const = default;
};

} // namespace velto
