#include "App/CommandLine.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

struct ActionFlag {
    QLatin1StringView flag;
    QLatin1StringView action;
};
constexpr std::array kActionFlags{
    ActionFlag{"--expanded"_L1, "open"_L1},       ActionFlag{"--search"_L1, "open-and-search"_L1},
    ActionFlag{"--settings"_L1, "settings"_L1},   ActionFlag{"--welcome"_L1, "welcome"_L1},
    ActionFlag{"--demo-peek"_L1, "demo-peek"_L1}, ActionFlag{"--try"_L1, "try"_L1},
};

std::optional<QString> valueOf(QLatin1StringView flag, const QStringList &arguments)
{
    const qsizetype at = arguments.indexOf(flag);
    return at >= 0 && at + 1 < arguments.size() ? std::optional(arguments.at(at + 1)) : std::nullopt;
}

constexpr std::array kOtherFlags{"--activated"_L1, "--snapshot"_L1, "--site-preview"_L1, "--test-backdrop"_L1,
                                 "--display"_L1,   "--check"_L1,    "--help"_L1,         "--version"_L1};

bool isKnown(const QString &flag)
{
    return std::ranges::find(kActionFlags, flag, &ActionFlag::flag) != kActionFlags.end()
        || std::ranges::find(kOtherFlags, flag) != kOtherFlags.end();
}

QString firstUnknown(const QStringList &arguments)
{
    const auto found =
        std::ranges::find_if(arguments, [](const QString &each) { return each.startsWith("--"_L1) && !isKnown(each); });
    return found == arguments.end() ? QString() : *found;
}

} // namespace

CommandLine CommandLine::parse(const QStringList &arguments)
{
    QStringList actions;
    for (const auto &[flag, action] : kActionFlags)
        if (arguments.contains(flag))
            actions.append(action);
    return {
        .actions = actions,
        .activated = arguments.contains("--activated"_L1),
        .snapshot = valueOf("--snapshot"_L1, arguments),
        .sitePreview = valueOf("--site-preview"_L1, arguments),
        .testBackdrop = valueOf("--test-backdrop"_L1, arguments),
        .display = valueOf("--display"_L1, arguments).value_or(QString()),
        .check = arguments.contains("--check"_L1),
        .help = arguments.contains("--help"_L1) || arguments.contains("-h"_L1),
        .version = arguments.contains("--version"_L1) || arguments.contains("-v"_L1),
        .unknown = firstUnknown(arguments),
    };
}

QStringList CommandLine::actionsForTheOther() const
{
    // A start by the bus gets its request over the bus.
    return actions.isEmpty() && !activated ? QStringList{u"open"_s} : actions;
}

QString helpText()
{
    return QCoreApplication::translate(
        "CommandLine",
        "Usage: velto [options]\n"
        "A strip at the top of the screen that says what needs you.\n"
        "\n"
        "  --expanded            open the panel at the start\n"
        "  --search              open the panel on the search of the todos; bind a key to this\n"
        "                        where the desktop keeps global keys to itself\n"
        "  --try                 ask you a question, as a session would, and print what it was told;\n"
        "                        needs no Claude Code and touches no settings of it\n"
        "  --demo-peek           show an example of a line that slides out\n"
        "  --welcome             show the welcome again\n"
        "  --settings            open the settings\n"
        "  --display NAME        x11 or wayland, where the desktop has both\n"
        "  --check               tell what works on this desktop and what to do about the rest\n"
        "  --activated           wait for what the desktop's session bus asks for\n"
        "  --version             print the version and end\n"
        "  --help                print this and end\n"
        "\n"
        "To look at the views; the first two need no display and start no second Velto:\n"
        "\n"
        "  --snapshot FOLDER     write a picture of each view, as things are now, and end\n"
        "  --site-preview FILE   write a picture of the panel with made-up content and end\n"
        "  --test-backdrop KIND  start on a background: light, color or dark\n"
        "\n"
        "If Velto runs already, that one does what the options say, or opens its panel.\n"
        "Rest the pointer on the strip, or press Control-Alt-N, to open the panel.\n");
}

} // namespace velto
