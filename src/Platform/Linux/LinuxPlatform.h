#pragma once

#include "Platform/HotKey.h"
#include "Platform/Linux/AtspiAccessibility.h"
#include "Platform/Linux/AutostartLoginItem.h"
#include "Platform/Linux/LibsecretKeychain.h"
#include "Platform/Linux/LinuxMachine.h"
#include "Platform/Linux/LinuxTerminals.h"
#include "Platform/Linux/LinuxVideoPlayer.h"
#include "Platform/Linux/LogindSession.h"
#include "Platform/Linux/MprisPlayers.h"
#include "Platform/Linux/PortalAppearance.h"
#include "Platform/Linux/ProcessFolderPanel.h"
#include "Platform/Linux/QtDisplays.h"
#include "Platform/Linux/TrayStatusItem.h"
#include "Platform/Linux/WindowSystem.h"
#include "Platform/Linux/X11/XcbServer.h"
#include "Platform/Linux/XdgWorkspace.h"

#include <memory>
#include <optional>

namespace velto {

class Defaults;

/// Chooses the display that the toolkit will open, before there is an application object: Wayland where the compositor has a
/// layer shell, else X11, which may be XWayland. `wanted`, or without it VELTO_DISPLAY, is "x11" or "wayland" and settles it.
/// Returns one sentence for the user if there is none. Should the one there is refuse, the making of the application
/// object says so on the standard error and ends the program with status 1, where the toolkit itself would abort. A
/// QT_QPA_PLATFORM that names neither X11 nor Wayland is left as it is.
std::optional<QString> prepareGraphics(const QString &wanted = {});

/// All the services of a Linux desktop, in the order in which the pieces depend on each other.
/// Construction needs the application object and does next to nothing.
struct LinuxPlatform {
    LinuxPlatform(Clock &clock, Files &files, Defaults &defaults, const Places &places);

    /// Connects to the buses and begins to follow the desktop. Called once the strip has been painted, since none of it is
    /// needed for that. The status item, the global key and the clipboard are started by their first use.
    void start();

    XcbServer server;
    std::unique_ptr<WindowSystem> windows;
    QtDisplays displays;
    PanelWindow &panelWindow;
    Applications &applications;
    Clipboard &clipboard;
    bool keyByPortal; ///< where the display gives no program a global key
    std::unique_ptr<HotKey> ownHotKey;
    HotKey &hotKey;
    TrayStatusItem statusItem;
    LibsecretKeychain keychain;
    AutostartLoginItem loginItem;
    LogindSession session;
    AtspiAccessibility accessibility;
    MprisPlayers players;
    XdgWorkspace workspace;
    LinuxTerminals terminals;
    LinuxMachine machine;
    ProcessFolderPanel folderPanel;
    PortalAppearance appearance;
    LinuxVideoPlayer videoPlayer;
};

} // namespace velto
