#pragma once

#include <QStringList>

namespace velto {

/// What the program was asked to do. Flags are found anywhere; what isn't known is ignored.
struct CommandLine {
    /// What the program is to do once it runs, by name (see AppDelegate::act): --expanded, --search and so on.
    QStringList actions;
    bool activated = false; ///< --activated: the session bus starts it in order to reach it
    bool help = false; ///< --help
    bool version = false; ///< --version

    static CommandLine parse(const QStringList &arguments);
    /// What it asks of a program that runs already: without a word of its own, to open.
    QStringList actionsForTheOther() const;
};

/// What --help prints.
QString helpText();

} // namespace velto
