#pragma once

#include "Platform/Support.h"

#include <QString>
#include <functional>
#include <optional>

class QObject;

namespace velto {

/// The clipboard's plain text. UI thread only.
class Clipboard {
public:
    Clipboard() = default;
    Clipboard(const Clipboard &) = delete;
    Clipboard &operator=(const Clipboard &) = delete;
    virtual ~Clipboard() = default;

    /// Grows with every copy that any program makes. Costs no round trip to the display.
    virtual int changeCount() const = 0;
    /// Called after each growth of the count, on the UI thread. Whoever sets it takes it back before it goes.
    std::function<void()> copied = [] {};
    /// The text, from the program that owns it. Waits for that program, so use it for what the user asked for, not to peek.
    virtual QString text() const = 0;
    /// The same without waiting. `done` runs on the UI thread, unless `context` is gone by then, and may run before read()
    /// returns; with nothing if there is no text, if it is longer than `longest` bytes, if it is marked as a secret, and if
    /// another read() began meanwhile. If the program that owns it stays silent, it runs with nothing after a few seconds, and
    /// again should the text come later.
    virtual void read(int longest, QObject *context, std::function<void(std::optional<QString>)> done) = 0;
    virtual void setText(const QString &text) = 0;
    /// Whether copies made by every program are noticed.
    virtual Support support() const { return {}; }
};

} // namespace velto
