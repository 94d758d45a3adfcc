#pragma once

#include "App/AppDelegate.h"
#include "App/Windows.h"
#include "Core/HookInstaller.h"
#include "Core/Http.h"
#include "Core/Hub.h"
#include "Core/Prefs.h"
#include "Core/TerminalApp.h"
#include "Design/TabOrder.h"
#include "Platform/Linux/LinuxPlatform.h"
#include "Platform/Places.h"
#include "Platform/Posix/JsonDefaults.h"
#include "Platform/Posix/PosixFiles.h"
#include "Platform/Posix/PosixToolRunner.h"
#include "Platform/Posix/SystemClock.h"
#include "Platform/Posix/ThreadPoolBackground.h"
#include "Shell/CollapsedStrip.h"
#include "Shell/PanelContents.h"
#include "Shell/PanelKeys.h"
#include "Shell/PanelOutline.h"
#include "Shell/PeekLine.h"
#include "Shell/UI.h"
#include "Shell/VeltoPanel.h"
#include "Tabs/Quillbox/HubClient.h"

namespace velto {

struct CommandLine;

/// Everything, in the order in which it leans on each other. Lives as long as the application object.
class Program {
public:
    explicit Program(const CommandLine &commandLine);
    ~Program();

private:
    std::unique_ptr<QuillboxSource> makeQuillbox();
    std::unique_ptr<AgentsSource> makeAgents();
    void showPanel();
    void painted();

    bool m_welcome;
    Places m_places;
    SystemClock m_clock;
    PosixFiles m_files;
    JsonDefaults m_defaults;
    PosixToolRunner m_tools;
    ThreadPoolBackground m_background;
    LinuxPlatform m_platform;

    Prefs m_prefs;
    HookInstaller m_installer;
    TerminalApp m_terminal;
    Http m_http;
    HubClient m_hubClient;
    Hub m_hub;
    UI m_ui;
    CollapsedStrip m_strip;
    PeekLine m_peekLine;
    PanelOutline m_outline;
    PanelContents m_contents;
    VeltoPanel m_panel;
    PanelKeys m_keys;
    TabOrder m_tabOrder;
    AppDelegate m_delegate;
    Windows m_windows;
};

} // namespace velto
