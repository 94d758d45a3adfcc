#pragma once

#include "Platform/Terminals.h"

#include <QString>
#include <optional>

namespace velto {

class Defaults;
struct Places;

/// The terminal in which sessions are resumed and commands are run. UI thread only.
class TerminalApp {
public:
    using App = Terminals::App;

    TerminalApp(Defaults &defaults, Terminals &terminals, const Places &places);

    static QString name(App app) { return Terminals::name(app); }
    bool installed(App app) const;

    /// The user's choice if it is installed, otherwise the first one found, otherwise Terminal.
    App current() const;
    void setCurrent(App app);

    /// Runs a command line in a new window of the current terminal.
    void launch(const QString &command) const;
    /// Reopens a Claude Code session in its folder. False, and nothing happens, if `session` is no well-formed id.
    bool resumeClaude(const std::optional<QString> &session, const std::optional<QString> &cwd) const;

private:
    Defaults &m_defaults;
    Terminals &m_terminals;
    const Places &m_places;
};

/// `text` as one word of a command line, for the shells of the Bourne family and for fish.
QString shellQuoted(const QString &text);

} // namespace velto
