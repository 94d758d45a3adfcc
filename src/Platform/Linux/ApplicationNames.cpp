#include "Platform/Linux/ApplicationNames.h"

#include "Platform/Applications.h"

#include <QHash>
#include <QList>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

struct Names {
    QLatin1StringView name; // WM_CLASS in lower case, its class or its instance
    QLatin1StringView identifier;
};

constexpr auto kTerminal = "com.apple.Terminal"_L1;
constexpr auto kCode = "com.microsoft.VSCode"_L1;
constexpr auto kCursor = "com.todesktop.cursor"_L1;
constexpr auto kGhostty = "com.mitchellh.ghostty"_L1;
constexpr auto kWarp = "dev.warp.Warp-Stable"_L1;

constexpr std::array kNames{
    Names{"obs"_L1, kScreenRecorder},
    Names{"com.obsproject.studio"_L1, kScreenRecorder},
    Names{"simplescreenrecorder"_L1, kScreenRecorder},
    Names{"vokoscreenng"_L1, kScreenRecorder},
    Names{"kazam"_L1, kScreenRecorder},
    Names{"spotify"_L1, "com.spotify.client"_L1},
    Names{"code"_L1, kCode},
    Names{"code - insiders"_L1, kCode},
    Names{"code-oss"_L1, kCode},
    Names{"codium"_L1, kCode},
    Names{"vscodium"_L1, kCode},
    Names{"visual studio code"_L1, kCode},
    Names{"cursor"_L1, kCursor},
    Names{"ghostty"_L1, kGhostty},
    Names{"com.mitchellh.ghostty"_L1, kGhostty},
    Names{"warp"_L1, kWarp},
    Names{"warp-terminal"_L1, kWarp},
    Names{"dev.warp.warp"_L1, kWarp},
    Names{"gnome-terminal"_L1, kTerminal},
    Names{"gnome-terminal-server"_L1, kTerminal},
    Names{"org.gnome.terminal"_L1, kTerminal},
    Names{"org.gnome.console"_L1, kTerminal},
    Names{"kgx"_L1, kTerminal},
    Names{"org.gnome.ptyxis"_L1, kTerminal},
    Names{"ptyxis"_L1, kTerminal},
    Names{"konsole"_L1, kTerminal},
    Names{"org.kde.konsole"_L1, kTerminal},
    Names{"org.kde.yakuake"_L1, kTerminal},
    Names{"yakuake"_L1, kTerminal},
    Names{"xterm"_L1, kTerminal},
    Names{"uxterm"_L1, kTerminal},
    Names{"koi8rxterm"_L1, kTerminal},
    Names{"alacritty"_L1, kTerminal},
    Names{"kitty"_L1, kTerminal},
    Names{"foot"_L1, kTerminal},
    Names{"org.codeberg.dnkl.foot"_L1, kTerminal},
    Names{"footclient"_L1, kTerminal},
    Names{"xfce4-terminal"_L1, kTerminal},
    Names{"mate-terminal"_L1, kTerminal},
    Names{"lxterminal"_L1, kTerminal},
    Names{"qterminal"_L1, kTerminal},
    Names{"deepin-terminal"_L1, kTerminal},
    Names{"io.elementary.terminal"_L1, kTerminal},
    Names{"terminator"_L1, kTerminal},
    Names{"terminology"_L1, kTerminal},
    Names{"tilix"_L1, kTerminal},
    Names{"com.gexperts.tilix"_L1, kTerminal},
    Names{"org.wezfurlong.wezterm"_L1, kTerminal},
    Names{"wezterm"_L1, kTerminal},
    Names{"wezterm-gui"_L1, kTerminal},
    Names{"urxvt"_L1, kTerminal},
    Names{"rxvt"_L1, kTerminal},
    Names{"st"_L1, kTerminal},
    Names{"st-256color"_L1, kTerminal},
    Names{"sakura"_L1, kTerminal},
    Names{"termite"_L1, kTerminal},
    Names{"guake"_L1, kTerminal},
    Names{"tilda"_L1, kTerminal},
    Names{"cool-retro-term"_L1, kTerminal},
    Names{"hyper"_L1, kTerminal},
    Names{"tabby"_L1, kTerminal},
    Names{"rio"_L1, kTerminal},
    Names{"contour"_L1, kTerminal},
    Names{"org.freedesktop.weston.wayland-terminal"_L1, kTerminal},
    Names{"com.raggesilver.blackbox"_L1, kTerminal},
};

struct RecorderName {
    QByteArrayView name; // of the process, 15 bytes at most
    QByteArrayView argument; // which its command line must contain, alone or at the end of a path
    bool mayRest = false;
};

constexpr std::array kRecorders{
    RecorderName{"obs", {}},
    RecorderName{"simplescreenrec", {}},
    RecorderName{"vokoscreenNG", {}},
    RecorderName{"kazam", {}},
    RecorderName{"wf-recorder", {}},
    RecorderName{"wl-screenrec", {}},
    RecorderName{"recordmydesktop", {}},
    RecorderName{"gpu-screen-reco", "gpu-screen-recorder"}, // its window has a longer name
    RecorderName{"ffmpeg", "x11grab"},
    RecorderName{"ffmpeg", "kmsgrab"},
    RecorderName{"kooha", {}, true},
    RecorderName{"spectacle", {}, true},
    RecorderName{"gjs", "org.gnome.Shell.Screencast", true},
};

/// Lockers that run only while the screen is locked.
constexpr std::array<QByteArrayView, 7> kLockers{"swaylock", "gtklock", "hyprlock", "waylock", "i3lock", "slock", "xsecurelock"};

QLatin1StringView known(const QString &name)
{
    static const auto kTable = [] {
        QHash<QString, QLatin1StringView> table;
        for (const auto &entry : kNames)
            table.insert(QString(entry.name), entry.identifier);
        return table;
    }();
    return kTable.value(name.toLower());
}

} // namespace

QString identifierForClass(const QString &instance, const QString &windowClass)
{
    // The class names the application; the instance is often the program's file name, and xterm -name can set it to anything.
    for (const auto &name : {windowClass, instance})
        if (const auto identifier = known(name); !identifier.isEmpty())
            return QString(identifier);
    return windowClass.isEmpty() ? instance : windowClass;
}

std::optional<WatchedProgram> watchedProgram(QByteArrayView name, const std::function<QByteArray()> &arguments)
{
    if (std::ranges::find(kLockers, name) != kLockers.end())
        return WatchedProgram{QString(kScreenLocker), true, false};
    for (const RecorderName &each : kRecorders) {
        if (each.name != name)
            continue;
        const QList<QByteArray> words = each.argument.isEmpty() ? QList<QByteArray>() : arguments().split('\0');
        const bool fits = each.argument.isEmpty() || std::ranges::any_of(words, [&each](const QByteArray &word) {
                              return word == each.argument || word.endsWith('/' + each.argument.toByteArray());
                          });
        if (fits)
            return WatchedProgram{QString(kScreenRecorder), false, each.mayRest};
    }
    return std::nullopt;
}

} // namespace velto
