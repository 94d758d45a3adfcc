#pragma once

#include "Platform/Sounds.h"

namespace velto {

class Background;

/// The sounds of the desktop's sound theme (freedesktop.org's sound naming specification), through libcanberra. That is loaded
/// for the first sound, and nothing of it keeps running after one. Silent without it, without a sound theme and without a
/// sound server.
class CanberraSounds final : public Sounds {
public:
    /// `background` outlives it.
    explicit CanberraSounds(Background &background);

    void play(const QString &name) override;

private:
    Background &m_background;
};

} // namespace velto
