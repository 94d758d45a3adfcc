#include "Tabs/Home/HomeBrief.h"

#include "Core/Link.h"
#include "Feeds/Work/WorkItem.h"
#include "Platform/Workspace.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

HomeBrief::HomeBrief(const HomeStores &stores, Ways ways, Workspace &workspace, const Places &places, const QDateTime &now)
    : m_stores(stores)
    , m_ways(std::move(ways))
    , m_workspace(workspace)
    , m_places(places)
    , m_now(now)
{
}

QList<HomeItem> HomeBrief::items() &&
{
    agents();
    calendar();
    focus();
    media();
    pullRequests();
    workTools();
    todos();
    priority();
    clipboard();
    builds();
    transfers();
    mcp();
    repos();
    usage();
    learning();
    std::ranges::stable_sort(m_items, {}, &HomeItem::tone);
    return std::move(m_items);
}

bool HomeBrief::isOn(Prefs::Module module) const
{
    return m_stores.prefs.isOn(module);
}

HomeItem &HomeBrief::add(HomeItem item)
{
    m_items.append(std::move(item));
    return m_items.last();
}

bool HomeBrief::addUnlessReady(const QString &id, const QString &symbol, const QString &name, const SourceState &state,
                               const std::function<void()> &unlock)
{
    using Tone = HomeItem::Tone;
    switch (state.kind()) {
    case SourceState::Kind::Ready:
        return true;
    case SourceState::Kind::Loading:
        add({id, symbol, Tone::Off, tr("%1: checking…").arg(name)}).checking = true;
        break;
    case SourceState::Kind::Failed:
        add({id, u"exclamationmark.triangle"_s, Tone::Warn, tr("%1: couldn't check").arg(name), state.message()});
        break;
    case SourceState::Kind::Unavailable:
        if (state.isLocked()) {
            add({id,
                 u"key"_s,
                 Tone::Warn,
                 u"%1: %2"_s.arg(name, state.reason()),
                 state.fix(),
                 {},
                 HomeItem::Action{tr("Unlock"), unlock}});
            break;
        }
        add({id,
             symbol,
             Tone::Off,
             u"%1: %2"_s.arg(name, state.reason()),
             state.fix(),
             {},
             openTab(tr("Connect"), Tab::Connect),
             true});
        break;
    }
    return false;
}

HomeItem::Action HomeBrief::openTab(const QString &label, Tab tab) const
{
    return {label, [open = m_ways.openTab, tab] { open(tab); }};
}

std::optional<HomeItem::Action> HomeBrief::openLink(const QString &label, const QUrl &url) const
{
    if (!opensInBrowser(url))
        return std::nullopt;
    return HomeItem::Action{label, [&workspace = m_workspace, url] { workspace.open(url); }};
}

std::optional<HomeItem::Action> HomeBrief::openFirst(const QString &label, const QList<WorkItem> &items) const
{
    if (items.isEmpty() || !items.first().url)
        return std::nullopt;
    return openLink(label, *items.first().url);
}

} // namespace velto
