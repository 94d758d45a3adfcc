#include "Core/Stores.h"

#include "Core/HookListener.h"
#include "Core/Hooks.h"
#include "Platform/Places.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Connect/ConnectSource.h"
#include "Tabs/Home/EverydaySource.h"
#include "Tabs/Home/GlanceSource.h"
#include "Tabs/Home/HomeSource.h"
#include "Tabs/Home/SignalsSource.h"
#include "Tabs/Home/WorkSource.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosSource.h"

namespace velto {

Stores::Stores(const Desktop &d, std::unique_ptr<HookListener> listener, QuillboxMode::Selection selection)
    : prefs(d.defaults, d.places, d.clock)
    , installer(d.files, d.clock, d.places.home, hookToken(d.defaults))
    , terminal(d.defaults, d.terminals, d.places)
    , hubClient(d.http, d.background, std::move(selection))
    , usage(std::make_shared<UsageReader>(d.fileTree, claudeLogs(d.places.home)))
    , google({d.clock, d.background, d.http, d.keychain, d.workspace, prefs})
    , hub(hubNeeds(d, std::move(listener)))
{
}

Stores::~Stores()
{
    usage->stop();
}

Hub::Needs Stores::hubNeeds(const Desktop &d, std::unique_ptr<HookListener> listener)
{
    auto quillbox = std::make_unique<QuillboxSource>(QuillboxSource::Needs{d.clock, d.machine, hubClient, d.places.home});
    auto todos = std::make_unique<TodosSource>(TodosSource::Needs{d.clock, d.background, d.tools, d.files, d.places, *quillbox});
    auto agents =
        std::make_unique<AgentsSource>(AgentsSource::Needs{d.clock, d.background, d.tools, d.files, d.applications, d.workspace,
                                                           prefs, terminal, d.places, installer, std::move(listener)});
    auto slow = std::make_unique<SignalsSource>(
        SignalsSource::Needs{d.clock, d.background, d.tools, prefs, claudeLogs(d.places.home),
                             [reader = usage](const QDateTime &now) { return reader->read(now); }});
    auto everyday = std::make_unique<EverydaySource>(EverydaySource::Needs{d.clock, prefs, google, d.players, d.sounds});
    auto work = std::make_unique<WorkSource>(WorkSource::Needs{d.clock, d.background, d.tools, d.http, d.keychain, prefs});
    auto glances = std::make_unique<GlanceSource>(
        GlanceSource::Needs{d.clock, d.background, d.tools, d.clipboard, d.http, prefs, d.places.downloads});
    return {d.clock,
            d.accessibility,
            d.applications,
            d.workspace,
            prefs,
            terminal,
            google,
            std::move(quillbox),
            std::move(todos),
            std::move(agents),
            std::move(slow),
            std::move(everyday),
            std::move(work),
            std::move(glances),
            [d](Hub &made) {
                return std::make_unique<HomeSource>(
                    HomeSource::Needs{made, made.prefs(), d.workspace, d.videoPlayer, d.places, d.clock});
            },
            [d, this](Hub &made) {
                return std::make_unique<ConnectSource>(ConnectSource::Needs{
                    made, prefs, d.clock, d.background, d.keychain, d.clipboard, d.folderPanel, terminal, d.tools, google});
            }};
}

} // namespace velto
