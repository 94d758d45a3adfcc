#pragma once

#include "Core/Prefs.h"
#include "Core/TerminalApp.h"
#include "Feeds/Calendar/GoogleCalendar.h"
#include "Feeds/Usage/UsageReader.h"
#include "Hooks/HookInstaller.h"
#include "Hub/Desktop.h"
#include "Hub/Hub.h"
#include "Tabs/Quillbox/QuillboxClient.h"

namespace velto {

class HookListener;

/// Every store, in the order in which they lean on each other. UI thread only.
class Stores {
public:
    /// `listener` may be null: then no hook is heard. `selection` decides whether there is a memory hub.
    Stores(const Desktop &desktop, std::unique_ptr<HookListener> listener,
           QuillboxMode::Selection selection = &QuillboxMode::current);
    ~Stores();

private:
    Hub::Needs hubNeeds(const Desktop &desktop, std::unique_ptr<HookListener> listener);

public:
    Prefs prefs;
    HookInstaller installer;
    TerminalApp terminal;
    HubClient hubClient;
    std::shared_ptr<UsageReader> usage; ///< a reading under way holds it too
    GoogleCalendar google;
    Hub hub;
};

} // namespace velto
