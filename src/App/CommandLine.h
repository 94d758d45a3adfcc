#pragma once

#include <QStringList>
#include <optional>

namespace velto {

/// What the program was asked to do. Flags are found anywhere; what isn't known is ignored.
struct CommandLine {
    bool expanded = false; ///< --expanded: opens the panel at the start
    bool demoPeek = false; ///< --demo-peek: shows an example of a Peek one second after the start
    bool welcome = false; ///< --welcome: shows the welcome even if it has been finished
    bool help = false; ///< --help
    bool version = false; ///< --version

    static CommandLine parse(const QStringList &arguments);
};

/// What --help prints.
QString helpText();

} // namespace velto
