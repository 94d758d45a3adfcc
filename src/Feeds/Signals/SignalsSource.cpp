#include "Feeds/Signals/SignalsSource.h"

#include "Feeds/Usage/Pace.h"
#include "Platform/Background.h"
#include "Platform/Clock.h"
#include "Platform/ToolRunner.h"

#include <QFileInfo>
#include <algorithm>
#include <atomic>
#include <iterator>
#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// Longer than a repository takes if each of its gits runs into its time limit.
constexpr std::chrono::seconds kStuck{45};
/// Each occupies a thread.
constexpr qsizetype kMostHanging = 3;

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

/// Shared by a walk and this source.
struct SignalsSource::RepoWalk {
    QSet<QString> passedBy;
    std::atomic_bool wanted = true; ///< turns false to end it: its folders may no longer be the chosen ones

    // UI thread only.
    int stepsSeen = -1;
    bool givenUp = false;
    QString givenUpIn;

    bool enter(const QString &folder)
    {
        if (!wanted || passedBy.contains(folder))
            return false;
        const std::lock_guard lock(m_mutex);
        m_folder = folder;
        ++m_steps;
        return true;
    }
    std::pair<QString, int> place()
    {
        const std::lock_guard lock(m_mutex);
        return {m_folder, m_steps};
    }

private:
    std::mutex m_mutex;
    QString m_folder; ///< where it was last
    int m_steps = 0;
};

SignalsSource::SignalsSource(Needs needs, QObject *parent)
    : QObject(parent)
    , m_needs(std::move(needs))
    , m_mcpRows({"serverName"_ba, "status"_ba, "detail"_ba})
{
}

SignalsSource::~SignalsSource()
{
    if (m_walk)
        m_walk->wanted = false;
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
        if (m_needs.prefs.isOn(signal->module) && mayBeRead(*signal) && due(*signal, force))
            begin(*signal, force);
    }
    publish();
}

/// Before the welcome is finished, the user's folders aren't read.
bool SignalsSource::mayBeRead(const Signal &signal)
{
    if (&signal != &m_repoWalk || m_needs.prefs.mayLookAtRepos())
        return true;
    set(m_reposState,
        SourceState::unavailable(tr("Your code folders aren't watched yet."),
                                 tr("Finish the welcome, or add a folder in the Connect tab.")));
    return false;
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
        // A time in the future: the clock was set back meanwhile.
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
        m_walk->wanted = false;
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
    if (m_hanging.size() >= kMostHanging) {
        m_repoWalk.underWay = false;
        return;
    }
    m_walk = std::make_shared<RepoWalk>();
    m_walk->passedBy = m_hanging;
    const auto work = [walk = m_walk, &tools = m_needs.tools, roots = m_needs.prefs.repoRoots()]() -> RepoReading {
        const EnterFolder enter = [walk](const QString &folder) { return walk->enter(folder); };
        QStringList present;
        std::ranges::copy_if(roots, std::back_inserter(present),
                             [&enter](const QString &root) { return enter(root) && QFileInfo::exists(root); });
        if (present.isEmpty())
            return {RepoReading::End::NoFolders, {}};
        if (!tools.toolInstalled(u"git"_s))
            return {RepoReading::End::NoGit, {}};
        return {RepoReading::End::Read, repoStates(tools, present, enter)};
    };
    inBackground(m_needs.background, this, work, [this, walk = m_walk](const RepoReading &reading) { walked(*walk, reading); });
    m_walkWatch = m_needs.clock.every(kStuck, [this] { watchWalk(); });
}

void SignalsSource::walked(const RepoWalk &walk, const RepoReading &reading)
{
    if (walk.givenUp) {
        m_hanging.remove(walk.givenUpIn);
        return;
    }
    m_walkWatch.reset();
    m_repoWalk.underWay = false;
    if (walk.wanted) {
        if (reading.end != RepoReading::End::NoGit)
            set(m_repos, reading.repos);
        if (reading.end == RepoReading::End::Read)
            set(m_reposState, SourceState::ready());
        else if (reading.end == RepoReading::End::NoFolders)
            set(m_reposState,
                SourceState::unavailable(tr("No code folders chosen."),
                                         tr("Add the folders you keep repos in, in the Connect tab.")));
        else
            set(m_reposState, SourceState::unavailable(tr("Git isn't installed."), tr("Install the Xcode Command Line Tools.")));
    }
    if (std::exchange(m_repoWalk.again, false))
        begin(m_repoWalk, true);
    publish();
}

/// Gives up a walk that hasn't moved since the last look, and starts one that skips the folder where it hangs.
void SignalsSource::watchWalk()
{
    const auto [folder, steps] = m_walk->place();
    if (std::exchange(m_walk->stepsSeen, steps) != steps)
        return;
    m_walkWatch.reset();
    m_walk->wanted = false;
    m_walk->givenUp = true;
    m_walk->givenUpIn = folder;
    m_hanging.insert(folder);
    m_repoWalk.underWay = false;
    m_repoWalk.again = false;
    begin(m_repoWalk, true);
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
