#include "Hub/Stores.h"

#include "Hooks/HookListener.h"
#include "Hooks/Hooks.h"
#include "Platform/Places.h"

namespace velto {

Stores::Stores(const Desktop &d, std::unique_ptr<HookListener> listener, QuillboxMode::Selection selection)
    : prefs(d.defaults, d.places, d.clock)
    , installer(d.files, d.clock, d.places.home, hookToken(d.defaults))
    , terminal(d.defaults, d.terminals, d.places)
    , quillboxClient(d.http, d.background, std::move(selection))
    , usage(std::make_shared<UsageReader>(d.fileTree, claudeLogs(d.places.home)))
    , google({d.clock, d.background, d.http, d.keychain, d.workspace, prefs})
    , quillbox({d.clock, d.machine, quillboxClient, d.places.home})
    , todos({d.clock, d.background, d.tools, d.files, d.writer, d.places, quillbox})
    , agents({d.clock, d.background, d.tools, d.files, d.fileTree, d.applications, d.workspace, prefs, terminal, d.places,
              installer, d.machine, std::move(listener)})
    , signalsSource({d.clock, d.background, d.tools, prefs, claudeLogs(d.places.home),
                     [reader = usage](const QDateTime &now) { return reader->read(now); }})
    , everyday({d.clock, prefs, google, d.players, d.sounds})
    , work({d.clock, d.background, d.tools, d.http, d.keychain, prefs})
    , glances({d.clock, d.background, d.tools, d.fileTree, d.clipboard, d.http, prefs, d.places.downloads})
    , home({{prefs, agents, everyday, work, todos, glances, signalsSource, quillbox},
            terminal,
            d.workspace,
            d.videoPlayer,
            d.writer,
            d.places,
            d.clock})
    , connectTab({todos, agents, everyday, work, signalsSource, google, prefs, d.clock, d.background, d.keychain, d.clipboard,
                  d.folderPanel, terminal, d.tools})
    , hub({d.clock, d.accessibility, d.applications, d.workspace, prefs, terminal, google, quillbox, todos, agents, signalsSource,
           everyday, work, glances, home, connectTab})
{
}

Stores::~Stores()
{
    usage->stop();
}

} // namespace velto
