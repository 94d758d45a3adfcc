#include "Tabs/Home/SignalsSource.h"

#include "Core/Prefs.h"
#include "Platform/Background.h"
#include "Platform/Places.h"
#include "Platform/ToolRunner.h"

#include <QFileInfo>
#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velto {

namespace {

template <typename List, typename Wanted> List filtered(const List &list, Wanted wanted)
{
    List result;
    std::ranges::copy_if(list, std::back_inserter(result), wanted);
    return result;
}

} // namespace

SignalsSource::SignalsSource(Needs needs, QObject *parent)
    : QObject(parent)
    , m_needs(std::move(needs))
{
}

QList<MCPServer> SignalsSource::mcpFailing() const
{
    return filtered(m_now.mcp, [](const MCPServer &server) { return server.status == "failed"_L1; });
}

QList<MCPServer> SignalsSource::mcpNeedsAuth() const
{
    return filtered(m_now.mcp, [](const MCPServer &server) { return server.status == "auth"_L1; });
}

QList<RepoState> SignalsSource::reposNeedingWork() const
{
    return filtered(m_now.repos, [](const RepoState &repo) { return repo.dirty > 0 || repo.ahead > 0; });
}

// The stamp is set as the work starts, so that no tick starts the same again.
bool SignalsSource::due(Signal signal, bool force, std::chrono::seconds interval)
{
    const Clock::Instant now = m_needs.clock.now();
    const auto last = m_last.constFind(signal);
    if (!force && last != m_last.cend() && now - *last < interval)
        return false;
    m_last.insert(signal, now);
    return true;
}

void SignalsSource::refresh(bool force)
{
    if (m_needs.prefs.isOn(Prefs::Module::Usage) && due(Signal::Usage, force, 300s))
        readTokens();
    if (m_needs.prefs.isOn(Prefs::Module::Repos) && due(Signal::Repos, force, 300s))
        readRepos();
    if (m_needs.prefs.isOn(Prefs::Module::Mcp) && due(Signal::Mcp, force, 600s))
        readMcp();
}

void SignalsSource::checkMcp()
{
    due(Signal::Mcp, true, 0s);
    readMcp();
}

void SignalsSource::readTokens()
{
    if (!QFileInfo(m_needs.places.home + "/.claude/projects"_L1).isDir()) {
        Published next = m_now;
        next.usageState = SourceState::unavailable(tr("No Claude Code logs on this Mac."), tr("Install Claude Code to see usage."));
        publish(std::move(next));
        return;
    }
    inBackground(
        m_needs.background, this,
        [read = m_needs.readUsage, now = m_needs.clock.wallTime()] { return read(now); },
        [this](const TokenUsage &tokens) {
            Published next = m_now;
            next.tokens = tokens;
            next.usageState = SourceState::ready();
            publish(std::move(next));
        });
}

void SignalsSource::readRepos()
{
    const QStringList roots = filtered(m_needs.prefs.repoRoots(), [](const QString &root) { return QFileInfo::exists(root); });
    Published next = m_now;
    if (roots.isEmpty()) {
        next.repos.clear();
        next.reposState =
            SourceState::unavailable(tr("No code folders chosen."), tr("Add the folders you keep repos in, in the Connect tab."));
        publish(std::move(next));
    } else if (!m_needs.tools.toolInstalled(u"git"_s)) {
        next.reposState = SourceState::unavailable(tr("Git isn't installed."), tr("Install the Xcode Command Line Tools."));
        publish(std::move(next));
    } else {
        inBackground(
            m_needs.background, this, [&tools = m_needs.tools, roots] { return repoStates(tools, roots); },
            [this](const QList<RepoState> &repos) {
                Published read = m_now;
                read.repos = repos;
                read.reposState = SourceState::ready();
                publish(std::move(read));
            });
    }
}

void SignalsSource::readMcp()
{
    if (!m_needs.tools.toolInstalled(u"claude"_s)) {
        Published next = m_now;
        next.mcpState =
            SourceState::unavailable(tr("Claude Code isn't installed."), tr("MCP health comes from `claude mcp list`."));
        publish(std::move(next));
        return;
    }
    inBackground(
        m_needs.background, this, [&tools = m_needs.tools] { return mcpHealth(tools); },
        [this](const McpHealth &health) {
            Published next = m_now;
            next.mcp = health.servers;
            next.mcpState = health.error ? SourceState::failed(*health.error) : SourceState::ready();
            publish(std::move(next));
        });
}

void SignalsSource::publish(Published next)
{
    if (next == m_now)
        return;
    m_now = std::move(next);
    Q_EMIT changed();
}

} // namespace velto
