#include "Tabs/Home/WorkBrief.h"

#include "Core/FirstNames.h"
#include "Core/Texts.h"
#include "Feeds/Glances/GlanceSource.h"
#include "Feeds/Signals/SignalsSource.h"
#include "Feeds/Usage/Pace.h"
#include "Feeds/Work/WorkSource.h"
#include "Platform/Places.h"
#include "Platform/Workspace.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr int kNamed = 3;
constexpr int kReposNamed = 4;

template <typename List> QString firstTitles(const List &list)
{
    return firstOf(list, kNamed, [](const auto &each) { return each.title; });
}

} // namespace

void WorkBrief::pullRequests()
{
    if (!m_page.isOn(Prefs::Module::Prs))
        return;
    const WorkSource &work = m_page.stores.work;
    if (!m_page.addUnlessReady(u"prs"_s, u"arrow.triangle.pull"_s, u"GitHub"_s, work.prState()) || work.prs().isEmpty())
        return;
    const qsizetype count = work.prs().size();
    m_page.add({u"prs"_s, u"arrow.triangle.pull"_s, HomeItem::Tone::Warn,
                count == 1 ? tr("1 pull request waits for your review") : tr("%1 pull requests wait for your review").arg(count),
                firstTitles(work.prs()), u"gh search prs"_s, openFirst(tr("Review"), work.prs())});
}

void WorkBrief::workTools()
{
    if (!m_page.isOn(Prefs::Module::Work))
        return;
    WorkSource &work = m_page.stores.work;
    m_page.addUnlessReady(u"work"_s, u"briefcase"_s, tr("Work tools"), work.workState(), [&work] { work.unlock(); });
    if (const qsizetype count = work.issues().size(); count > 0) {
        m_page.add({u"issues"_s, u"square.stack.3d.up"_s, HomeItem::Tone::Info,
                    count == 1 ? tr("1 issue assigned to you") : tr("%1 issues assigned to you").arg(count),
                    firstTitles(work.issues()), u"Linear / Jira"_s, openFirst(tr("Open"), work.issues())});
    }
    if (const qsizetype count = work.mentions().size(); count > 0) {
        m_page.add({u"slack"_s, u"at"_s, HomeItem::Tone::Warn,
                    count == 1 ? tr("1 Slack mention today") : tr("%1 Slack mentions today").arg(count),
                    work.mentions().first().title, u"Slack"_s, openFirst(tr("Open"), work.mentions())});
    }
}

void WorkBrief::clipboard()
{
    const std::optional<ClipboardPreview> link = m_page.stores.glances.clipboard();
    if (!link)
        return;
    const bool video = link->url.host().contains("youtube"_L1) || link->url.host() == "youtu.be"_L1;
    const auto playIt = [play = m_page.ways.playVideo, url = link->url] { play(url); };
    const QString &mark = link->symbol;
    m_page.add({u"clipboard"_s, mark, HomeItem::Tone::Info, link->title, link->detail, tr("Clipboard"),
                video ? std::optional(HomeItem::Action{tr("Play"), playIt}) : m_page.openLink(tr("Open"), link->url)});
}

void WorkBrief::builds()
{
    const int count = m_page.stores.glances.failedBuilds();
    if (count >= 1)
        m_page.add({u"builds"_s, u"xmark.octagon"_s, HomeItem::Tone::Warn,
                    count == 1 ? tr("1 failed GitHub build") : tr("%1 failed GitHub builds").arg(count),
                    tr("Recent Actions runs"), u"GitHub CLI"_s,
                    m_page.openLink(tr("Open"), QUrl(u"https://github.com/notifications"_s))});
}

void WorkBrief::transfers()
{
    GlanceSource &glances = m_page.stores.glances;
    const int count = glances.activeTransfers();
    if (count < 1)
        return;
    const auto reveal = [&workspace = m_page.workspace, folder = glances.downloads()] { workspace.showInFileManager(folder); };
    m_page.add({u"transfers"_s,
                u"arrow.down.circle"_s,
                HomeItem::Tone::Info,
                count == 1 ? tr("1 download in progress") : tr("%1 downloads in progress").arg(count),
                tr("Downloads folder"),
                {},
                HomeItem::Action{tr("Reveal"), reveal}});
}

void WorkBrief::mcp()
{
    if (!m_page.isOn(Prefs::Module::Mcp))
        return;
    const SignalsSource &slow = m_page.stores.signalsSource;
    const QString wires = u"point.3.connected.trianglepath.dotted"_s;
    if (!m_page.addUnlessReady(u"mcp"_s, wires, tr("MCP servers"), slow.mcpState()))
        return;
    const auto name = [](const MCPServer &server) { return server.name; };
    const auto names = [&](const QList<MCPServer> &servers) { return firstOf(servers, int(servers.size()), name); };
    const QString source = u"claude mcp list"_s;
    if (const QList<MCPServer> down = slow.mcpFailing(); !down.isEmpty()) {
        m_page.add({u"mcp"_s, u"bolt.horizontal.circle"_s, HomeItem::Tone::Bad,
                    down.size() == 1 ? tr("MCP server %1 is down").arg(down.first().name)
                                     : tr("%1 MCP servers are down").arg(down.size()),
                    names(down), source});
    } else if (const QList<MCPServer> signIn = slow.mcpNeedsAuth(); !signIn.isEmpty()) {
        m_page.add({u"mcp"_s, u"key"_s, HomeItem::Tone::Info, tr("%1 MCP servers need you to sign in").arg(signIn.size()),
                    names(signIn), source});
    } else if (const qsizetype count = slow.mcp().size(); count > 0) {
        m_page.add(
            {u"mcp"_s, u"checkmark.circle"_s, HomeItem::Tone::Info, tr("All %1 MCP servers connected").arg(count), {}, source});
    }
}

void WorkBrief::repos()
{
    if (!m_page.isOn(Prefs::Module::Repos))
        return;
    const SignalsSource &slow = m_page.stores.signalsSource;
    const QString branch = u"arrow.triangle.branch"_s;
    if (!m_page.addUnlessReady(u"repos"_s, branch, tr("Repos"), slow.reposState()))
        return;
    const QList<RepoState> unsaved = slow.reposNeedingWork();
    if (unsaved.isEmpty())
        return;
    QStringList roots = m_page.stores.prefs.repoRoots();
    for (QString &root : roots)
        root = withTilde(root, m_page.places.home);
    const auto state = [](const RepoState &repo) { return u"%1 (%2)"_s.arg(repo.name, repo.summary()); };
    m_page.add({u"repos"_s, branch, HomeItem::Tone::Info,
                unsaved.size() == 1 ? tr("1 repo has unsaved work") : tr("%1 repos have unsaved work").arg(unsaved.size()),
                firstOf(unsaved, kReposNamed, state), tr("git status in %1").arg(roots.join(u", "_s))});
}

void WorkBrief::usage()
{
    if (!m_page.isOn(Prefs::Module::Usage))
        return;
    const SignalsSource &slow = m_page.stores.signalsSource;
    const QString gauge = u"gauge.with.dots.needle.50percent"_s;
    const TokenUsage tokens = slow.tokens();
    if (!m_page.addUnlessReady(u"usage"_s, gauge, tr("Claude usage"), slow.usageState()) || tokens.turns < 1)
        return;
    const std::optional<QString> outlook = pace(tokens, m_page.stores.prefs.dailyBudget(), m_page.now);
    m_page.add(
        {u"usage"_s, gauge, HomeItem::Tone::Info,
         tr("Claude today: %1 tokens over %2 replies").arg(compact(budgeted(tokens)), QLocale().toString(tokens.turns)),
         outlook ? *outlook : tr("%1 written, %2 re-read from cache").arg(compact(tokens.output), compact(tokens.cacheRead)),
         u"~/.claude/projects logs"_s});
}

std::optional<HomeItem::Action> WorkBrief::openFirst(const QString &label, const QList<WorkItem> &items) const
{
    if (items.isEmpty() || !items.first().url)
        return std::nullopt;
    return m_page.openLink(label, *items.first().url);
}

} // namespace velto
