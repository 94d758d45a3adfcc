#pragma once

#include "Platform/Background.h"

namespace velto {

/// Does everything at once.
class InlineBackground final : public Background {
public:
    void start(std::function<void()> work, std::function<void()> done) override
    {
        work();
        done();
    }
};

} // namespace velto
