#pragma once

#include <QString>

namespace velto {

/// The clipboard's plain text. UI thread only.
class Clipboard {
public:
    Clipboard() = default;
    Clipboard(const Clipboard &) = delete;
    Clipboard &operator=(const Clipboard &) = delete;
    virtual ~Clipboard() = default;

    /// Goes up by at least one with every copy, by whatever program. Costs no round trip to the display.
    virtual int changeCount() const = 0;
    virtual QString text() const = 0;
    virtual void setText(const QString &text) = 0;
};

} // namespace velto
