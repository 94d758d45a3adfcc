#include "Feeds/Signals/SignalsSource.h"

#include "Feeds/Usage/Pace.h"
#include "Platform/Background.h"
#include "Platform/Clock.h"
#include "Platform/ToolRunner.h"

#include <QFileInfo>
#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

template <typename T> QList<T> members(const QList<T> &all, bool (T::*belongs)() const)
{
    QList<T> result;
    std::ranges::copy_if(all, std::back_inserter(result), belongs);
    return result;
}

QList<RowModel::Row> rowsOf(const QList<MCPServer> &servers)
{
    QList<RowModel::Row> rows;
    rows.reserve(servers.size());
    for (const MCPServer &server : servers)
        rows.append(RowModel::Row{server.name, server.status, server.detail});
    return rows;
}

} // namespace

struct SignalsSource::RepoReading {
    enum class End : quint8 { Read, NoFolders, NoGit };
    End end = End::Read;
    QList<RepoState> repos;
};

SignalsSource::SignalsSource(Needs needs, QObject *parent)
    : QObject(parent)
    , m_needs(std::move(needs))
    , m_mcpRows({"serverName"_ba, "status"_ba, "detail"_ba})
{
}

SignalsSource::~SignalsSource()
{
    if (m_walkWanted)
        *m_walkWanted = false;
}

QList<MCPServer> SignalsSource::mcpFailing() const
{
    return members(m_mcp, &MCPServer::isFailing);
}

QList<MCPServer> SignalsSource::mcpNeedsAuth() const
{
    return members(m_mcp, &MCPServer::needsAuth);
}

QList<RepoState> SignalsSource::reposNeedingWork() const
{
    return members(m_repos, &RepoState::needsWork);
}

qint64 SignalsSource::tokensUsed() const
{
    return budgeted(m_tokens);
}

void SignalsSource::refresh(bool force)
{
    for (Signal *signal : {&m_usage, &m_repoWalk, &m_mcpCheck}) {
        if (m_needs.prefs.isOn(signal->module) && due(*signal, force))
            begin(*signal, force);
    }
}

void SignalsSource::retryMcp()
{
    set(m_mcpRetrying, true);
    publish();
    due(m_mcpCheck, true);
    begin(m_mcpCheck, true);
}

bool SignalsSource::due(Signal &signal, bool force) const
{
    const QDateTime now = m_needs.clock.wallTime();
    if (!force && signal.last) {
        const std::chrono::milliseconds passed(signal.last->msecsTo(now));
        // A time in the future is a clock that was set back meanwhile.
        if (passed.count() >= 0 && passed < signal.interval)
            return false;
    }
    signal.last = now;
    return true;
}

void SignalsSource::begin(Signal &signal, bool force)
{
    if (!signal.underWay) {
        signal.underWay = true;
        (this->*signal.start)();
        return;
    }
    if (!force)
        return;
    signal.again = true;
    if (&signal == &m_repoWalk)
        *m_walkWanted = false;
}

/// Runs `work()` in the background and gives its value to `apply`, which sets the fields.
template <typename Work, typename Apply> void SignalsSource::read(Signal &signal, Work work, Apply apply)
{
    inBackground(m_needs.background, this, std::move(work), [this, &signal, apply = std::move(apply)](auto reading) {
        signal.underWay = false;
        apply(std::move(reading));
        if (std::exchange(signal.again, false))
            begin(signal, true);
        publish();
    });
}

void SignalsSource::readUsage()
{
    const auto work = [logs = m_needs.claudeLogs, read = m_needs.readUsage, now = m_needs.clock.wallTime()] {
        return QFileInfo::exists(logs) ? std::optional(read(now)) : std::nullopt;
    };
    read(m_usage, work, [this](const std::optional<TokenUsage> &usage) {
        if (usage)
            set(m_tokens, *usage);
        set(m_usageState,
            usage ? SourceState::ready()
                  : SourceState::unavailable(tr("No Claude Code logs on this Mac."), tr("Install Claude Code to see usage.")));
    });
}

void SignalsSource::readRepos()
{
    m_walkWanted = std::make_shared<std::atomic_bool>(true);
    const auto work = [wanted = m_walkWanted, &tools = m_needs.tools, roots = m_needs.prefs.repoRoots()]() -> RepoReading {
        QStringList present;
        std::ranges::copy_if(roots, std::back_inserter(present), qOverload<const QString &>(&QFileInfo::exists));
        if (present.isEmpty())
            return {RepoReading::End::NoFolders, {}};
        if (!tools.toolInstalled(u"git"_s))
            return {RepoReading::End::NoGit, {}};
        return {RepoReading::End::Read, repoStates(tools, present, [wanted] { return wanted->load(); })};
    };
    read(m_repoWalk, work, [this, wanted = m_walkWanted](const RepoReading &reading) {
        if (!*wanted)
            return;
        if (reading.end != RepoReading::End::NoGit)
            set(m_repos, reading.repos);
        switch (reading.end) {
        case RepoReading::End::Read:
            return set(m_reposState, SourceState::ready());
        case RepoReading::End::NoFolders:
            return set(m_reposState,
                       SourceState::unavailable(tr("No code folders chosen."),
                                                tr("Add the folders you keep repos in, in the Connect tab.")));
        case RepoReading::End::NoGit:
            return set(m_reposState,
                       SourceState::unavailable(tr("Git isn't installed."), tr("Install the Xcode Command Line Tools.")));
        }
    });
}

void SignalsSource::readMcp()
{
    const auto work = [&tools = m_needs.tools] {
        return tools.toolInstalled(u"claude"_s) ? std::optional(mcpHealth(tools)) : std::nullopt;
    };
    read(m_mcpCheck, work, [this](const std::optional<MCPHealth> &health) {
        if (!m_mcpCheck.again)
            set(m_mcpRetrying, false);
        if (!health) {
            set(m_mcpState,
                SourceState::unavailable(tr("Claude Code isn't installed."), tr("MCP health comes from `claude mcp list`.")));
            return;
        }
        set(m_mcp, health->servers);
        m_mcpRows.setRows(rowsOf(m_mcp));
        set(m_mcpState, health->error ? SourceState::failed(*health->error) : SourceState::ready());
    });
}

template <typename Value> void SignalsSource::set(Value &field, const Value &value)
{
    if (field == value)
        return;
    field = value;
    m_changed = true;
}

void SignalsSource::publish()
{
    if (std::exchange(m_changed, false))
        Q_EMIT changed();
}

} // namespace velto
