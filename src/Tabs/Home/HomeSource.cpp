#include "Tabs/Home/HomeSource.h"

#include "Core/Prefs.h"
#include "Feeds/Glances/GlanceSource.h"
#include "Feeds/Glances/VideoPreview.h"
#include "Feeds/Usage/Pace.h"
#include "Platform/Clock.h"
#include "Platform/FileWriter.h"
#include "Platform/VideoPlayer.h"
#include "Platform/Workspace.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Home/HomeBrief.h"

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qsizetype kNextShown = 2;
constexpr qsizetype kTodayShown = 4;
constexpr std::chrono::seconds kNotice{8};
constexpr std::chrono::milliseconds kClipboardRead{300}; // the program that was copied from has answered by then

QList<QByteArray> itemRoles()
{
    return {"itemId"_ba, "symbol"_ba, "tone"_ba, "title"_ba, "detail"_ba, "from"_ba, "actionLabel"_ba};
}

RowModel::Row rowOf(const HomeItem &item)
{
    const QString from = item.source.isEmpty() ? QString() : HomeSource::tr("From: %1").arg(item.source);
    // If only one session waits, the title names it already.
    const QString beside = item.title.startsWith(item.detail) ? QString() : item.detail;
    return {item.id, item.symbol, int(item.tone), item.title, beside, from, item.action ? item.action->label : QString()};
}

bool oneOf(const QString &id, std::initializer_list<QLatin1StringView> ids)
{
    return std::ranges::find(ids, id) != ids.end();
}

QList<RowModel::Row> rows(const QList<HomeItem> &items, qsizetype most, auto belongs)
{
    QList<RowModel::Row> result;
    for (const HomeItem &item : items) {
        if (result.size() < most && std::invoke(belongs, item))
            result.append(rowOf(item));
    }
    return result;
}

} // namespace

HomeSource::HomeSource(const Needs &needs, QObject *parent)
    : VeltoSource(parent)
    , m_needs(needs)
    , m_ways{[this](Tab tab) { Q_EMIT tabWanted(tab); }, [this](const QUrl &url) { playVideo(url); }}
    , m_spotlight(needs.terminal)
    , m_needsRows(itemRoles())
    , m_nextRows(itemRoles())
    , m_todayRows(itemRoles())
{
    connect(&m_needs.writer, &FileWriter::changed, this, &HomeSource::worldChanged);
    publish();
}

HomeSource::~HomeSource() = default;

QString HomeSource::title() const
{
    return tr("Home");
}

QString HomeSource::symbol() const
{
    return u"house"_s;
}

QUrl HomeSource::makeView() const
{
    return QUrl(u"qrc:/qt/qml/Velto/Home/HomeView.qml"_s);
}

const QList<HomeItem> &HomeSource::items() const
{
    if (m_stale) {
        m_items = homeBrief(m_needs.stores, m_ways, m_needs.workspace, m_needs.writer, m_needs.places, m_needs.clock.wallTime());
        m_stale = false;
    }
    return m_items;
}

int HomeSource::badge() const
{
    return int(std::ranges::count_if(items(), &HomeItem::urgent));
}

QString HomeSource::greeting() const
{
    return velto::greeting(m_needs.clock.wallTime());
}

QString HomeSource::headlineText() const
{
    const int count = badge();
    if (count == 1)
        return tr("1 thing needs you");
    if (count > 1)
        return tr("%1 things need you").arg(count);
    return headlineTone() == Off ? tr("Checking…") : tr("All clear");
}

HomeSource::Tone HomeSource::headlineTone() const
{
    if (const auto first = std::ranges::find_if(items(), &HomeItem::urgent); first != items().end())
        return Tone(int(first->tone));
    const bool checking = std::ranges::any_of(items(), &HomeItem::checking);
    return checking ? Off : Info;
}

bool HomeSource::guideShown() const
{
    return !m_needs.stores.prefs.glanceGuideDismissed();
}

void HomeSource::worldChanged()
{
    m_stale = true;
    publish();
}

void HomeSource::publish()
{
    arrange();
    Published now{items(), greeting(), m_setupText, guideShown(), m_needs.stores.glances.playingVideo(), m_notice};
    if (now == m_published)
        return;
    m_published = std::move(now);
    Q_EMIT changed();
}

void HomeSource::arrange()
{
    QList<HomeItem> shown = items();
    AgentsSource &agents = m_needs.stores.agents;
    const QList<Agent> running = m_needs.stores.prefs.isOn(Prefs::Module::Agents) ? agents.running() : QList<Agent>();
    const QList<Agent> waiting = m_needs.stores.prefs.isOn(Prefs::Module::Agents) ? agents.waiting() : QList<Agent>();
    // The spotlight covers these: "agents-wait" only if it shows the one session that waits.
    const bool showsWaiting = running.isEmpty() && waiting.size() == 1;
    shown.removeIf([&](const HomeItem &item) {
        return oneOf(item.id, {"agents-run"_L1, "tools"_L1}) || (showsWaiting && item.id == "agents-wait"_L1);
    });
    const auto isNext = [](const HomeItem &item) { return oneOf(item.id, {"cal"_L1, "focus"_L1}); };
    m_needsRows.setRows(rows(shown, shown.size(), &HomeItem::urgent));
    // What isn't set up is named only in the line about that.
    m_nextRows.setRows(rows(shown, kNextShown, [&](const HomeItem &item) { return isNext(item) && !item.setup; }));
    m_todayRows.setRows(rows(shown, kTodayShown, [&](const HomeItem &item) {
        return !item.urgent() && !item.setup && !isNext(item)
            && !oneOf(item.id, {"usage"_L1, "repos"_L1, "transfers"_L1, "mcp"_L1});
    }));

    QStringList missing;
    for (const HomeItem &item : shown) {
        if (item.setup)
            missing.append(item.title.section(u':', 0, 0));
    }
    m_setupText = missing.isEmpty() ? QString() : tr("Not set up: %1").arg(missing.join(u", "_s));

    m_spotlight.set(!running.isEmpty()       ? std::optional(running.first())
                        : !waiting.isEmpty() ? std::optional(waiting.first())
                                             : std::nullopt,
                    m_needs.clock.wallTime());
}

void HomeSource::run(const QString &itemId)
{
    const auto found = std::ranges::find(items(), itemId, &HomeItem::id);
    if (found == items().end() || !found->action)
        return;
    // Copied: the list may be rebuilt while the action runs.
    const auto action = found->action->run;
    action();
}

void HomeSource::openConnect()
{
    Q_EMIT tabWanted(Tab::Connect);
}

void HomeSource::useCopiedLink()
{
    m_needs.stores.glances.refresh();
    m_linkRead = m_needs.clock.after(kClipboardRead, [this] {
        if (m_needs.stores.glances.clipboard())
            Q_EMIT rowWanted(u"clipboard"_s);
        else
            notice(tr("No link is copied right now."));
    });
}

void HomeSource::dismissGuide()
{
    m_needs.stores.prefs.setGlanceGuideDismissed(true);
}

QString HomeSource::videoHtml() const
{
    return videoShown() ? videoPage(*m_published.video).html : QString();
}

QUrl HomeSource::videoBase() const
{
    return videoShown() ? videoPage(*m_published.video).base : QUrl();
}

VideoPlayer *HomeSource::videoPlayer() const
{
    return &m_needs.videoPlayer;
}

void HomeSource::playVideo(const QUrl &url)
{
    if (m_needs.videoPlayer.installed()) {
        m_needs.stores.glances.setPlayingVideo(url);
        return;
    }
    notice(m_needs.workspace.open(url) ? tr("Opened in your browser. Videos play here once Qt WebEngine is installed.")
                                       : tr("Qt WebEngine isn't installed, and no browser could be opened either."));
}

void HomeSource::notice(const QString &text)
{
    m_notice = text;
    m_noticeEnd = m_needs.clock.after(kNotice, [this] {
        m_notice.clear();
        publish();
    });
    publish();
}

void HomeSource::openVideoInBrowser()
{
    if (videoShown())
        m_needs.workspace.open(*m_published.video);
}

void HomeSource::closeVideo()
{
    m_needs.stores.glances.closeVideo();
}

} // namespace velto
