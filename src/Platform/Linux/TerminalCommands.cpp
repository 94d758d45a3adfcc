#include "Platform/Linux/TerminalCommands.h"

#include <QFileInfo>
#include <QHash>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

// The usual terminals; the desktop's own is tried before them. The last is the plainest, and on nearly every system.
constexpr std::array kUsual{"gnome-terminal"_L1, "ptyxis"_L1,    "kgx"_L1,        "konsole"_L1, "xfce4-terminal"_L1,
                            "mate-terminal"_L1,  "qterminal"_L1, "lxterminal"_L1, "tilix"_L1,   "terminator"_L1,
                            "kitty"_L1,          "alacritty"_L1, "wezterm"_L1,    "ghostty"_L1, "foot"_L1,
                            "urxvt"_L1,          "st"_L1,        "xterm"_L1};

struct DesktopTerminal {
    QLatin1StringView desktop;
    QLatin1StringView terminal;
};
constexpr std::array kDesktopTerminals{
    DesktopTerminal{"GNOME"_L1, "ptyxis"_L1},        DesktopTerminal{"GNOME"_L1, "gnome-terminal"_L1},
    DesktopTerminal{"GNOME"_L1, "kgx"_L1},           DesktopTerminal{"KDE"_L1, "konsole"_L1},
    DesktopTerminal{"XFCE"_L1, "xfce4-terminal"_L1}, DesktopTerminal{"MATE"_L1, "mate-terminal"_L1},
    DesktopTerminal{"LXQt"_L1, "qterminal"_L1},      DesktopTerminal{"LXDE"_L1, "lxterminal"_L1},
};

/// Shells that take -l, -i and -c like the Bourne shell, and that `exec` replaces.
bool isOrdinaryShell(const QString &shell)
{
    static const QStringList kShells{u"sh"_s, u"bash"_s, u"zsh"_s, u"fish"_s, u"dash"_s, u"ksh"_s, u"mksh"_s, u"ash"_s};
    return kShells.contains(QFileInfo(shell).fileName());
}

QString quoted(QString word)
{
    return u'\'' + word.replace(u'\'', u"'\\''"_s) + u'\'';
}

/// On a line of its own, so that nothing in the command line can swallow it.
QString thenStay(const QString &shell, const QString &commandLine)
{
    return commandLine + u"\nexec "_s + quoted(shell);
}

std::optional<TerminalProgram> firstOf(const FindExecutable &find, const QStringList &names)
{
    for (const auto &name : names)
        if (const auto path = find(name); !path.isEmpty())
            return TerminalProgram{path, terminalStyle(name)};
    return std::nullopt;
}

} // namespace

TerminalStyle terminalStyle(const QString &fileName)
{
    static const QHash<QString, TerminalStyle> kStyles{
        {u"gnome-terminal"_s, TerminalStyle::Dashes},
        {u"ptyxis"_s, TerminalStyle::Dashes},
        {u"kgx"_s, TerminalStyle::Dashes},
        {u"kitty"_s, TerminalStyle::Plain},
        {u"foot"_s, TerminalStyle::Plain},
        {u"footclient"_s, TerminalStyle::Plain},
        {u"xdg-terminal-exec"_s, TerminalStyle::Plain},
        {u"xfce4-terminal"_s, TerminalStyle::ExecuteRest},
        {u"terminator"_s, TerminalStyle::ExecuteRest},
        {u"mate-terminal"_s, TerminalStyle::ExecuteRest},
        {u"wezterm"_s, TerminalStyle::Start},
        {u"lxterminal"_s, TerminalStyle::Script},
        {u"tilix"_s, TerminalStyle::Script},
        {u"terminology"_s, TerminalStyle::Script},
        {u"warp-terminal"_s, TerminalStyle::File},
    };
    return kStyles.value(fileName, TerminalStyle::Execute);
}

std::optional<TerminalProgram> defaultTerminal(const FindExecutable &find, const QString &desktop, bool wayland)
{
    if (auto chosen = firstOf(find, {u"xdg-terminal-exec"_s}))
        return chosen;
    if (const auto path = find(u"x-terminal-emulator"_s); !path.isEmpty()) {
        // The alternative is a terminal itself, or a wrapper that accepts xterm's -e.
        return TerminalProgram{path, terminalStyle(QFileInfo(QFileInfo(path).canonicalFilePath()).fileName())};
    }
    QStringList names;
    const auto desktops = desktop.split(u':');
    for (const auto &entry : kDesktopTerminals)
        if (desktops.contains(entry.desktop))
            names.append(QString(entry.terminal));
    for (const auto name : kUsual)
        if (wayland || name != "foot"_L1)
            names.append(QString(name));
    return firstOf(find, names);
}

std::optional<TerminalProgram> namedTerminal(const FindExecutable &find, const QString &name)
{
    return firstOf(find, {name});
}

QStringList shellCommand(const QString &shell, const QString &commandLine)
{
    // Interactive as well as login: people extend their PATH in either kind of start file.
    if (isOrdinaryShell(shell))
        return {shell, u"-l"_s, u"-i"_s, u"-c"_s, thenStay(shell, commandLine)};
    return {u"/bin/sh"_s, u"-l"_s, u"-c"_s, thenStay(shell, commandLine)};
}

bool needsScript(TerminalStyle style)
{
    return style == TerminalStyle::Script || style == TerminalStyle::File;
}

QStringList terminalArguments(TerminalStyle style, const QStringList &command, const QString &script)
{
    switch (style) {
    case TerminalStyle::Plain:
        return command;
    case TerminalStyle::Dashes:
        return QStringList{u"--"_s} + command;
    case TerminalStyle::Execute:
        return QStringList{u"-e"_s} + command;
    case TerminalStyle::ExecuteRest:
        return QStringList{u"-x"_s} + command;
    case TerminalStyle::Start:
        return QStringList{u"start"_s, u"--"_s} + command;
    case TerminalStyle::Script:
        return {u"-e"_s, script};
    case TerminalStyle::File:
        return {script};
    }
    Q_UNREACHABLE();
}

QByteArray shellScript(const QString &shell, const QString &commandLine)
{
    const auto interpreter = isOrdinaryShell(shell) ? shell : u"/bin/sh"_s;
    return (u"#!"_s + interpreter + u" -l\n"_s + thenStay(shell, commandLine) + u'\n').toUtf8();
}

} // namespace velto
