#pragma once

#include <memory>

namespace velto {

/// Thrown inside coroutines whose result nobody wants any longer; caught where the chain begins.
struct Abandoned { };

/// After a wait: goes on only if what it's for still lives.
template <typename T> void stillWanted(const std::weak_ptr<T> &life)
{
    if (life.expired())
        throw Abandoned{};
}

} // namespace velto
