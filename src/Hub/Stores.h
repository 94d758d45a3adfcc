#pragma once

#include "Core/Prefs.h"
#include "Core/TerminalApp.h"
#include "Feeds/Calendar/GoogleCalendar.h"
#include "Feeds/Everyday/EverydaySource.h"
#include "Feeds/Glances/GlanceSource.h"
#include "Feeds/Signals/SignalsSource.h"
#include "Feeds/Usage/UsageReader.h"
#include "Feeds/Work/WorkSource.h"
#include "Hooks/HookInstaller.h"
#include "Hub/Desktop.h"
#include "Hub/Hub.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Connect/ConnectSource.h"
#include "Tabs/Home/HomeSource.h"
#include "Tabs/Quillbox/QuillboxClient.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosSource.h"

namespace velto {

class HookListener;

/// Every store, in the order in which they depend on each other. UI thread only.
class Stores {
public:
    /// `listener` may be null: then no hook is heard. `selection` decides whether there is a memory hub.
    Stores(const Desktop &desktop, std::unique_ptr<HookListener> listener,
           QuillboxMode::Selection selection = &QuillboxMode::current);
    ~Stores();

    Prefs prefs;
    HookInstaller installer;
    TerminalApp terminal;
    QuillboxClient quillboxClient;
    std::shared_ptr<UsageReader> usage; ///< a reading under way holds it too
    GoogleCalendar google;
    QuillboxSource quillbox;
    TodosSource todos;
    AgentsSource agents;
    SignalsSource signalsSource;
    EverydaySource everyday;
    WorkSource work;
    GlanceSource glances;
    HomeSource home;
    ConnectSource connectTab;
    Hub hub;
};

} // namespace velto
