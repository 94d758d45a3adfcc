#include "Tabs/Home/HomeBrief.h"

#include "Core/Hub.h"
#include "Core/Process.h"
#include "Core/TerminalApp.h"
#include "Platform/Places.h"
#include "Platform/Workspace.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Home/EverydaySource.h"
#include "Tabs/Home/GlanceSource.h"
#include "Tabs/Home/Link.h"
#include "Tabs/Home/Pace.h"
#include "Tabs/Home/SignalsSource.h"
#include "Tabs/Home/WorkSource.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosSource.h"

#include <QLocale>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kSoon = 900; // seconds
constexpr int kNamed = 3;
constexpr int kReposNamed = 4;

/// The first names, joined.
template <typename List, typename Name> QString firstOf(const List &list, int count, Name name)
{
    QStringList names;
    for (const auto &each : list) {
        if (names.size() == count)
            break;
        names.append(name(each));
    }
    return names.join(u", "_s);
}

template <typename List> QString firstTitles(const List &list)
{
    return firstOf(list, kNamed, [](const auto &each) { return each.title; });
}

QStringList withoutEmpty(QStringList texts)
{
    texts.removeAll(QString());
    return texts;
}

bool isSales(const Todo &todo)
{
    return todo.project.contains("sales"_L1, Qt::CaseInsensitive) || todo.project.contains("outreach"_L1, Qt::CaseInsensitive);
}

} // namespace

HomeBrief::HomeBrief(Hub &hub, Workspace &workspace, const Places &places, const QDateTime &now)
    : m_hub(hub)
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
    return m_hub.prefs().isOn(module);
}

HomeItem &HomeBrief::add(HomeItem item)
{
    m_items.append(std::move(item));
    return m_items.last();
}

bool HomeBrief::addUnlessReady(const QString &id, const QString &symbol, const QString &name, const SourceState &state)
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
    return {label, [&hub = m_hub, tab] { hub.open(tab); }};
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

void HomeBrief::agents()
{
    if (!isOn(Prefs::Module::Agents))
        return;
    AgentsSource &agents = *m_hub.agents();
    addUnlessReady(u"agents"_s, u"sparkle"_s, tr("Agents"), agents.state());
    const auto title = [](const Agent &agent) { return agent.title(); };
    const HomeItem::Action show = openTab(tr("Show"), Tab::Agents);

    if (const QList<Agent> waiting = agents.waiting(); !waiting.isEmpty()) {
        const Agent &first = waiting.first();
        const auto resume = [&agents, id = first.id] { agents.resume(id); };
        add({u"agents-wait"_s, u"hand.raised.fill"_s, HomeItem::Tone::Warn,
             waiting.size() == 1 ? tr("%1 is waiting for you").arg(first.title())
                                 : tr("%1 agents are waiting for you").arg(waiting.size()),
             firstOf(waiting, kNamed, title), u"claude agents --json"_s,
             first.canResume() ? HomeItem::Action{tr("Resume"), resume} : show});
    }
    if (const QList<Agent> running = agents.running(); !running.isEmpty()) {
        const Agent &first = running.first();
        add({u"agents-run"_s, u"sparkle"_s, HomeItem::Tone::Info,
             running.size() == 1 ? tr("%1 is working").arg(first.title()) : tr("%1 agents are working").arg(running.size()),
             first.detail.value_or(QString()), u"claude agents --json"_s, show});
    }
    if (const QList<ToolProcess> &tools = agents.tools(); !tools.isEmpty()) {
        const auto name = [](const ToolProcess &tool) { return tool.name; };
        add({u"tools"_s,
             u"cpu"_s,
             HomeItem::Tone::Info,
             tr("Also running: %1").arg(firstOf(tools, int(tools.size()), name)),
             {},
             u"process scan"_s});
    }
}

void HomeBrief::calendar()
{
    if (!isOn(Prefs::Module::Calendar))
        return;
    const EverydaySource &everyday = *m_hub.everyday();
    addUnlessReady(u"cal"_s, u"calendar"_s, tr("Calendar"), everyday.calendarState());
    const std::optional<NextEvent> event = everyday.nextEvent();
    if (!event)
        return;
    const int left = everyday.leftToday();
    const QStringList detail{event->detail(), left >= 2 ? tr("%1 events left today").arg(left) : QString()};
    HomeItem &item =
        add({u"cal"_s, u"calendar"_s, m_now.msecsTo(event->start) < kSoon * 1000 ? HomeItem::Tone::Warn : HomeItem::Tone::Info,
             u"%1 %2"_s.arg(event->title, event->relative(m_now)), withoutEmpty(detail).join(u" · "_s), tr("Calendar")});
    if (event->joinURL)
        item.action = openLink(tr("Join"), *event->joinURL);
}

void HomeBrief::focus()
{
    if (!isOn(Prefs::Module::Focus))
        return;
    EverydaySource &everyday = *m_hub.everyday();
    if (everyday.focusEnd()) {
        add({u"focus"_s,
             u"timer"_s,
             HomeItem::Tone::Info,
             tr("Focusing · %1 left").arg(everyday.focusRemaining()),
             {},
             {},
             HomeItem::Action{tr("Stop"), [&everyday] { everyday.stopFocus(); }}});
        return;
    }
    add({u"focus"_s,
         u"timer"_s,
         HomeItem::Tone::Off,
         tr("Focus timer"),
         tr("Counts down in the velto and tells you when time's up."),
         {},
         HomeItem::Action{tr("Start %1 min").arg(everyday.focusMinutes()), [&everyday] { everyday.startFocus(); }}});
}

void HomeBrief::media()
{
    if (!isOn(Prefs::Module::Media))
        return;
    EverydaySource &everyday = *m_hub.everyday();
    const std::optional<NowPlaying> now = everyday.nowPlaying();
    if (!now)
        return;
    add({u"media"_s, now->playing ? u"music.note"_s : u"pause.circle"_s, HomeItem::Tone::Info, now->track,
         withoutEmpty({now->artist, now->app}).join(u" · "_s), now->app,
         HomeItem::Action{now->playing ? tr("Pause") : tr("Play"), [&everyday] { everyday.playPause(); }}});
}

void HomeBrief::pullRequests()
{
    if (!isOn(Prefs::Module::Prs))
        return;
    const WorkSource &work = *m_hub.work();
    if (!addUnlessReady(u"prs"_s, u"arrow.triangle.pull"_s, u"GitHub"_s, work.prState()) || work.prs().isEmpty())
        return;
    const qsizetype count = work.prs().size();
    add({u"prs"_s, u"arrow.triangle.pull"_s, HomeItem::Tone::Warn,
         count == 1 ? tr("1 pull request waits for your review") : tr("%1 pull requests wait for your review").arg(count),
         firstTitles(work.prs()), u"gh search prs"_s, openFirst(tr("Review"), work.prs())});
}

void HomeBrief::workTools()
{
    if (!isOn(Prefs::Module::Work))
        return;
    const WorkSource &work = *m_hub.work();
    addUnlessReady(u"work"_s, u"briefcase"_s, tr("Work tools"), work.workState());
    if (const qsizetype count = work.issues().size(); count > 0) {
        add({u"issues"_s, u"square.stack.3d.up"_s, HomeItem::Tone::Info,
             count == 1 ? tr("1 issue assigned to you") : tr("%1 issues assigned to you").arg(count), firstTitles(work.issues()),
             u"Linear / Jira"_s, openFirst(tr("Open"), work.issues())});
    }
    if (const qsizetype count = work.mentions().size(); count > 0) {
        add({u"slack"_s, u"at"_s, HomeItem::Tone::Warn,
             count == 1 ? tr("1 Slack mention today") : tr("%1 Slack mentions today").arg(count), work.mentions().first().title,
             u"Slack"_s, openFirst(tr("Open"), work.mentions())});
    }
}

void HomeBrief::todos()
{
    if (!isOn(Prefs::Module::Todos))
        return;
    const TodosSource &todos = *m_hub.todos();
    if (!addUnlessReady(u"todos"_s, u"checklist"_s, tr("Todos"), todos.state()))
        return;
    const QString today = m_now.toLocalTime().date().toString(Qt::ISODate);
    QList<Todo> late;
    QList<Todo> due;
    for (const Todo &todo : todos.todos()) {
        if (todo.overdue(today))
            late.append(todo);
        else if (todo.dueNow(today))
            due.append(todo);
    }
    addTodos(late, true);
    addTodos(due, false);
}

void HomeBrief::addTodos(const QList<Todo> &todos, bool late)
{
    if (todos.isEmpty())
        return;
    QList<Todo> sales;
    std::ranges::copy_if(todos, std::back_inserter(sales), isSales);
    const QList<Todo> &counted = sales.isEmpty() ? todos : sales;
    const qsizetype count = counted.size();
    QString title;
    if (late && !sales.isEmpty())
        title = count == 1 ? tr("1 sales follow-up is overdue") : tr("%1 sales follow-ups are overdue").arg(count);
    else if (late)
        title = count == 1 ? tr("1 todo is overdue") : tr("%1 todos are overdue").arg(count);
    else if (!sales.isEmpty())
        title = count == 1 ? tr("1 sales follow-up due today") : tr("%1 sales follow-ups due today").arg(count);
    else
        title = count == 1 ? tr("1 todo due today") : tr("%1 todos due today").arg(count);

    TodosSource &store = *m_hub.todos();
    const Filter filter = late ? Filter::Overdue : Filter::Today;
    const auto show = [&hub = m_hub, &store, filter] {
        store.setFilter(filter);
        hub.open(Tab::Todos);
    };
    add({late ? u"late"_s : u"due"_s, late ? u"exclamationmark.circle"_s : u"checklist"_s,
         late ? HomeItem::Tone::Bad : HomeItem::Tone::Info, title, std::ranges::min_element(counted, {}, &Todo::prio)->title,
         store.label(), HomeItem::Action{tr("Show"), show}});
}

void HomeBrief::priority()
{
    const QString priority = m_hub.prefs().dailyPriority();
    if (!priority.trimmed().isEmpty())
        add({u"priority"_s, u"pin.fill"_s, HomeItem::Tone::Info, priority, tr("Today's priority · stored in Velto")});
}

void HomeBrief::clipboard()
{
    GlanceSource &glances = *m_hub.glances();
    const std::optional<ClipboardPreview> link = glances.clipboard();
    if (!link)
        return;
    const bool video = link->url.host().contains("youtube"_L1) || link->url.host() == "youtu.be"_L1;
    const auto play = [&glances, url = link->url] { glances.setPlayingVideo(url); };
    const QString &mark = link->symbol;
    add({u"clipboard"_s, mark, HomeItem::Tone::Info, link->title, link->detail, tr("Clipboard"),
         video ? std::optional(HomeItem::Action{tr("Play"), play}) : openLink(tr("Open"), link->url)});
}

void HomeBrief::builds()
{
    const int count = m_hub.glances()->failedBuilds();
    if (count >= 1)
        add({u"builds"_s, u"xmark.octagon"_s, HomeItem::Tone::Warn,
             count == 1 ? tr("1 failed GitHub build") : tr("%1 failed GitHub builds").arg(count), tr("Recent Actions runs"),
             u"GitHub CLI"_s, openLink(tr("Open"), QUrl(u"https://github.com/notifications"_s))});
}

void HomeBrief::transfers()
{
    GlanceSource &glances = *m_hub.glances();
    const int count = glances.activeTransfers();
    if (count < 1)
        return;
    const auto reveal = [&workspace = m_workspace, folder = glances.downloads()] { workspace.showInFileManager(folder); };
    add({u"transfers"_s,
         u"arrow.down.circle"_s,
         HomeItem::Tone::Info,
         count == 1 ? tr("1 download in progress") : tr("%1 downloads in progress").arg(count),
         tr("Downloads folder"),
         {},
         HomeItem::Action{tr("Reveal"), reveal}});
}

void HomeBrief::mcp()
{
    if (!isOn(Prefs::Module::Mcp))
        return;
    const SignalsSource &slow = *m_hub.signalsSource();
    const QString wires = u"point.3.connected.trianglepath.dotted"_s;
    if (!addUnlessReady(u"mcp"_s, wires, tr("MCP servers"), slow.mcpState()))
        return;
    const auto name = [](const MCPServer &server) { return server.name; };
    const auto names = [&](const QList<MCPServer> &servers) { return firstOf(servers, int(servers.size()), name); };
    const QString source = u"claude mcp list"_s;
    if (const QList<MCPServer> down = slow.mcpFailing(); !down.isEmpty()) {
        add({u"mcp"_s, u"bolt.horizontal.circle"_s, HomeItem::Tone::Bad,
             down.size() == 1 ? tr("MCP server %1 is down").arg(down.first().name)
                              : tr("%1 MCP servers are down").arg(down.size()),
             names(down), source});
    } else if (const QList<MCPServer> signIn = slow.mcpNeedsAuth(); !signIn.isEmpty()) {
        add({u"mcp"_s, u"key"_s, HomeItem::Tone::Info, tr("%1 MCP servers need you to sign in").arg(signIn.size()), names(signIn),
             source});
    } else if (const qsizetype count = slow.mcp().size(); count > 0) {
        add({u"mcp"_s, u"checkmark.circle"_s, HomeItem::Tone::Info, tr("All %1 MCP servers connected").arg(count), {}, source});
    }
}

void HomeBrief::repos()
{
    if (!isOn(Prefs::Module::Repos))
        return;
    const SignalsSource &slow = *m_hub.signalsSource();
    const QString branch = u"arrow.triangle.branch"_s;
    if (!addUnlessReady(u"repos"_s, branch, tr("Repos"), slow.reposState()))
        return;
    const QList<RepoState> unsaved = slow.reposNeedingWork();
    if (unsaved.isEmpty())
        return;
    QStringList roots = m_hub.prefs().repoRoots();
    for (QString &root : roots)
        root = withTilde(root, m_places.home);
    const auto state = [](const RepoState &repo) { return u"%1 (%2)"_s.arg(repo.name, repo.summary()); };
    add({u"repos"_s, branch, HomeItem::Tone::Info,
         unsaved.size() == 1 ? tr("1 repo has unsaved work") : tr("%1 repos have unsaved work").arg(unsaved.size()),
         firstOf(unsaved, kReposNamed, state), tr("git status in %1").arg(roots.join(u", "_s))});
}

void HomeBrief::usage()
{
    if (!isOn(Prefs::Module::Usage))
        return;
    const SignalsSource &slow = *m_hub.signalsSource();
    const QString gauge = u"gauge.with.dots.needle.50percent"_s;
    const TokenUsage tokens = slow.tokens();
    if (!addUnlessReady(u"usage"_s, gauge, tr("Claude usage"), slow.usageState()) || tokens.turns < 1)
        return;
    const std::optional<QString> outlook = pace(tokens, m_hub.prefs().dailyBudget(), m_now);
    add({u"usage"_s, gauge, HomeItem::Tone::Info,
         tr("Claude today: %1 tokens over %2 replies").arg(compact(budgeted(tokens)), QLocale().toString(tokens.turns)),
         outlook ? *outlook : tr("%1 written, %2 re-read from cache").arg(compact(tokens.output), compact(tokens.cacheRead)),
         u"~/.claude/projects logs"_s});
}

void HomeBrief::learning()
{
    const QuillboxSource &quillbox = *m_hub.quillbox();
    if (!quillbox.mode().isHub() || !quillbox.snapshot().gap)
        return;
    add({u"gap"_s,
         u"graduationcap"_s,
         HomeItem::Tone::Info,
         tr("Learning card: %1").arg(quillbox.snapshot().gap->question),
         {},
         quillbox.mode().label(m_places.home),
         openTab(tr("Open"), Tab::Quillbox)});
}

} // namespace velto
