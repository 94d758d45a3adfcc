#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace velto {

/// How a terminal takes the program that it is to run.
enum class TerminalStyle : quint8 {
    Plain, ///< program and arguments after its own
    Dashes, ///< behind "--"
    Execute, ///< behind "-e", last
    ExecuteRest, ///< behind "-x", last
    Start, ///< behind "start --"
    Script, ///< "-e" and one word that it takes apart itself: a script's path is safe there
    File, ///< one argument: a script's path
};

struct TerminalProgram {
    QString path;
    TerminalStyle style = TerminalStyle::Execute;

    bool operator==(const TerminalProgram &) const = default;
};

/// The absolute path of an executable on the search path; empty if there is none.
using FindExecutable = std::function<QString(const QString &name)>;

/// The style of a terminal by its file name; Execute for one that isn't known, since that is what xterm does.
TerminalStyle terminalStyle(const QString &fileName);
/// The desktop's own terminal. `desktop` is XDG_CURRENT_DESKTOP; `wayland` tells whether Wayland-only terminals can run.
std::optional<TerminalProgram> defaultTerminal(const FindExecutable &find, const QString &desktop, bool wayland);
/// The terminal of this file name; nothing if it isn't there.
std::optional<TerminalProgram> namedTerminal(const FindExecutable &find, const QString &name);

/// Program and arguments that run a command line as if typed into a new shell of the user's, which stays when it has ended.
QStringList shellCommand(const QString &shell, const QString &commandLine);
/// The arguments for a terminal that runs `command`; `script` is the script's path for Script and File.
QStringList terminalArguments(TerminalStyle style, const QStringList &command, const QString &script);
bool needsScript(TerminalStyle style);
/// The script that does the same as shellCommand().
QByteArray shellScript(const QString &shell, const QString &commandLine);

} // namespace velto
