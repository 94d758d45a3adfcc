#include "Tabs/Home/BriefPage.h"

#include "Core/Link.h"
#include "Platform/FileWriter.h"
#include "Platform/Workspace.h"

using namespace Qt::StringLiterals;

namespace velto {

bool BriefPage::isOn(Prefs::Module module) const
{
    return stores.prefs.isOn(module);
}

HomeItem &BriefPage::add(HomeItem item)
{
    items.append(std::move(item));
    return items.last();
}

bool BriefPage::addUnlessReady(const QString &id, const QString &symbol, const QString &name, const SourceState &state,
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

void BriefPage::addFiles(FileWriter &writer)
{
    if (const QStringList problems = writer.problems(); !problems.isEmpty())
        add({u"unsaved"_s,
             u"exclamationmark.triangle"_s,
             HomeItem::Tone::Bad,
             tr("Not everything is saved yet"),
             problems.join(u' '),
             {},
             HomeItem::Action{tr("Try again"), [&writer] { writer.tryAgain(); }}});
    if (const QStringList words = writer.words(); !words.isEmpty())
        add({u"files"_s,
             u"exclamationmark.triangle"_s,
             HomeItem::Tone::Warn,
             tr("About your files"),
             words.join(u' '),
             {},
             HomeItem::Action{tr("Dismiss"), [&writer] { writer.dismissWords(); }}});
}

HomeItem::Action BriefPage::openTab(const QString &label, Tab tab) const
{
    return {label, [open = ways.openTab, tab] { open(tab); }};
}

std::optional<HomeItem::Action> BriefPage::openLink(const QString &label, const QUrl &url) const
{
    if (!opensInBrowser(url))
        return std::nullopt;
    return HomeItem::Action{label, [&workspace = workspace, url] { workspace.open(url); }};
}

} // namespace velto
