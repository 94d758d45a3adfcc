#pragma once

#include <QString>

namespace velto {

/// The desktop's own short sounds. UI thread only; returns at once.
class Sounds {
public:
    Sounds() = default;
    Sounds(const Sounds &) = delete;
    Sounds &operator=(const Sounds &) = delete;
    virtual ~Sounds() = default;

    /// Plays the desktop's counterpart of the sound of this name ("Glass"). Silent if there is none.
    virtual void play(const QString &name) = 0;
};

} // namespace velto
