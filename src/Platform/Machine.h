#pragma once

#include <QString>
#include <functional>
#include <optional>

class QObject;

namespace velto {

/// A program that listens at a port.
struct PortHolder {
    qint64 pid = 0;
    QString name; ///< as the system lists it
};

/// What is known about this machine.
class Machine {
public:
    Machine() = default;
    Machine(const Machine &) = delete;
    Machine &operator=(const Machine &) = delete;
    virtual ~Machine() = default;

    /// The name that its user gave it, as it is now; empty if it has none. Quick enough for the UI thread.
    virtual QString displayName() const = 0;
    /// Who listens at 127.0.0.1:`port`, if the system tells: one of the user's own programs, other than this one. Any
    /// thread; blocks for some milliseconds.
    virtual std::optional<PortHolder> holderOf(quint16 port) const = 0;
    /// Hands memory that was freed back to the system, where the allocator keeps it. Any thread; blocks for some milliseconds.
    virtual void giveBackMemory() const = 0;
    /// Whether a process of that id runs. Any thread; quick.
    virtual bool lives(qint64 pid) const = 0;
    /// Calls `ended` once on the UI thread when that program has ended, unless `context` is gone by then.
    virtual void whenEnded(qint64 pid, QObject *context, std::function<void()> ended) const = 0;
};

} // namespace velto
