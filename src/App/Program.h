#pragma once

#include "App/AppDelegate.h"
#include "App/CommandLine.h"
#include "App/StandIn.h"
#include "App/ThisMachine.h"
#include "App/Windows.h"
#include "Core/UI.h"
#include "Design/TabOrder.h"
#include "Hub/Stores.h"
#include "Platform/Posix/EndSignals.h"
#include "Shell/CollapsedStrip.h"
#include "Shell/PanelContents.h"
#include "Shell/PanelKeys.h"
#include "Shell/PanelOutline.h"
#include "Shell/PeekLine.h"
#include "Shell/VeltoPanel.h"

namespace velto {

class Activation;

/// Everything, in the order in which the parts depend on each other. Lives as long as the application object.
class Program {
public:
    Program(CommandLine commandLine, Activation &activation);
    ~Program();

private:
    std::unique_ptr<HookListener> makeListener();
    void showPanel();
    void showBackdrop(const QString &kind);
    void painted();
    void sweep();
    void saveTheRest();
    void followStandIn();

    Activation &m_activation;
    CommandLine m_commandLine;
    ThisMachine m_machine;
    Stores m_stores;
    UI m_ui;
    CollapsedStrip m_strip;
    PeekLine m_peekLine;
    PanelOutline m_outline;
    PanelContents m_contents;
    VeltoPanel m_panel;
    std::unique_ptr<QQuickView> m_backdrop;
    PanelKeys m_keys;
    TabOrder m_tabOrder;
    AppDelegate m_delegate;
    StandIn m_standIn;
    Windows m_windows;
    EndSignals m_endSignals;
    TimerHandle m_onShow;
    TimerHandle m_paintedAnyway;
};

} // namespace velto
