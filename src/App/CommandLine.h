#pragma once

#include <QStringList>
#include <optional>

namespace velto {

/// What the program was asked to do. Flags are found anywhere; a value is the argument right behind its flag, and a flag that
/// comes last without its value is ignored. What begins with a single dash is left to the toolkit ("-platform").
struct CommandLine {
    /// What the program is to do once it runs, by name (see AppDelegate::act): --expanded, --search and so on.
    QStringList actions;
    bool activated = false; ///< --activated: the session bus starts it in order to reach it
    std::optional<QString> snapshot; ///< --snapshot FOLDER: pictures of all views, and no more
    std::optional<QString> sitePreview; ///< --site-preview FILE: one picture of the panel with made-up content, and no more
    std::optional<QString> testBackdrop; ///< --test-backdrop KIND: a known background to look at the panel's materials on
    QString display; ///< --display NAME: "x11" or "wayland", where both would do; else empty
    bool check = false; ///< --check
    bool help = false; ///< --help
    bool version = false; ///< --version
    QString unknown; ///< the first unknown option, most likely mistyped; empty if there is none

    static CommandLine parse(const QStringList &arguments);
    /// What it asks of a program that already runs; without any action, to open.
    QStringList actionsForTheOther() const;
};

/// What --help prints.
QString helpText();

} // namespace velto
