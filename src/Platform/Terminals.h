#pragma once

#include <QString>

namespace velto {

/// The terminal applications of this desktop, by the identifiers of TerminalApp. UI thread only.
class Terminals {
public:
    Terminals() = default;
    Terminals(const Terminals &) = delete;
    Terminals &operator=(const Terminals &) = delete;
    virtual ~Terminals() = default;

    virtual bool installed(const QString &identifier) const = 0;
    /// Runs a shell command line in a new window of that terminal; returns at once and reports nothing.
    virtual void launch(const QString &identifier, const QString &commandLine) = 0;
};

} // namespace velto
