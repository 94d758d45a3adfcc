#include "Tabs/Agents/AgentsSource.h"

#include "Core/Prefs.h"
#include "Core/TerminalApp.h"
#include "Core/Texts.h"
#include "Hooks/HookInstaller.h"
#include "Hooks/HookListener.h"
#include "Platform/Applications.h"
#include "Platform/Background.h"
#include "Platform/Clock.h"
#include "Platform/Places.h"
#include "Platform/ToolRunner.h"
#include "Platform/Workspace.h"
#include "Tabs/Agents/AgentRows.h"

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// Listings under way at once, however many hook calls come in or tools hang; further requests start one after it.
constexpr int kMaximumListings = 1;
/// When so many sessions are gone, their memory is worth giving back, once their rows and Peeks are gone too.
constexpr qsizetype kManyFewer = 500;
constexpr std::chrono::seconds kRowsGone{3};

} // namespace

AgentsSource::AgentsSource(Needs needs, QObject *parent)
    : VeltoSource(parent)
    , m_needs(std::move(needs))
    , m_sessions(m_needs.clock, m_needs.prefs)
    , m_hooks({m_needs.clock, m_needs.background, m_needs.tools, m_needs.machine, m_needs.installer, m_needs.listener.get()})
    , m_alerts({m_needs.clock, m_needs.prefs, m_needs.applications})
    , m_watch(m_needs.clock, m_needs.background,
              {m_needs.fileTree, m_needs.files, m_needs.machine, m_needs.places.home + "/.claude/sessions"_L1})
    , m_toolRows(toolRoles())
{
    publish();
    // The ids of dismissed sessions, and whether the module is on, are stored in the preferences.
    connect(&m_needs.prefs, &Prefs::changed, this, [this] { m_needs.clock.post(this, [this] { publish(); }); });
    connect(&m_hooks, &HookLink::changed, this, [this] { publish(); });
    connect(&m_alerts, &AgentAlerts::peekWanted, this, &AgentsSource::peekWanted);
    connect(&m_alerts, &AgentAlerts::peekWithdrawn, this, &AgentsSource::peekWithdrawn);
    connect(&m_alerts, &AgentAlerts::peeksRetracted, this, &AgentsSource::peeksRetracted);
    connect(&m_alerts, &AgentAlerts::listingWanted, this, &AgentsSource::refresh);
    connect(&m_alerts, &AgentAlerts::notesWanted, &m_watch, &SessionWatch::setWanted);
    connect(&m_watch, &SessionWatch::seen, &m_alerts, qOverload<const QList<SessionStatus> &>(&AgentAlerts::compare));
    connect(&m_alerts, &AgentAlerts::turnEnded, &m_hooks, &HookLink::turnEnded);
    listen();
}

AgentsSource::~AgentsSource()
{
    m_needs.listener.reset();
}

void AgentsSource::listen()
{
    if (!m_needs.listener)
        return;
    connect(m_needs.listener.get(), &HookListener::told, this, &AgentsSource::hook);
    connect(m_needs.listener.get(), &HookListener::asked, this, &AgentsSource::permission);
    connect(m_needs.listener.get(), &HookListener::withdrawn, this, &AgentsSource::withdrawn);
    m_hooks.listen();
}

QString AgentsSource::title() const
{
    return tr("Agents");
}

QString AgentsSource::symbol() const
{
    return u"sparkle"_s;
}

QUrl AgentsSource::makeView() const
{
    return QUrl(u"qrc:/qt/qml/Velto/Agents/AgentsView.qml"_s);
}

void AgentsSource::refresh()
{
    if (!m_needs.prefs.isOn(Prefs::Module::Agents))
        return;
    m_hooks.listen();
    if (!m_needs.tools.toolInstalled(u"claude"_s)) {
        setAgents({});
        m_state = SourceState::unavailable(tr("Claude Code isn't installed on this Mac."),
                                           tr("Scan still finds other AI tools like Codex, Cursor and Ollama."));
        publish();
        return;
    }
    if (m_listingsUnderWay < kMaximumListings)
        startListing();
    else
        m_listingWanted = true;
}

void AgentsSource::startListing()
{
    struct Seen {
        std::optional<QList<Agent>> listing;
        HookInstaller::Standing hooks;
    };
    ++m_listingsUnderWay;
    inBackground(
        m_needs.background, this,
        [&tools = m_needs.tools, &files = m_needs.files, hooks = m_needs.installer.reader(), home = m_needs.places.home] {
            return Seen{loadAgents(tools, files, home), hooks()};
        },
        [this, begun = m_needs.clock.now(), edits = m_hooks.edits()](const Seen &seen) {
            --m_listingsUnderWay;
            // What was read before an edit of ours is outdated.
            if (edits == m_hooks.edits())
                m_hooks.found(seen.hooks);
            apply(seen.listing, begun);
            if (std::exchange(m_listingWanted, false))
                refresh();
        });
}

void AgentsSource::apply(const std::optional<QList<Agent>> &listing, Instant begun)
{
    if (!listing) {
        m_state = SourceState::failed(
            tr("Couldn't list Claude sessions. `claude agents` needs Claude Code 2.1 or newer; try updating it."));
        publish();
        return;
    }
    setAgents(*listing);
    m_state = SourceState::ready();
    publish();
    m_alerts.compare(*listing, begun);
}

void AgentsSource::setAgents(const QList<Agent> &agents)
{
    if (m_sessions.all().size() - agents.size() >= kManyFewer) {
        m_giveBack = m_needs.clock.after(
            kRowsGone, [this] { m_needs.background.start([&machine = m_needs.machine] { machine.giveBackMemory(); }, [] {}); });
    }
    m_sessions.set(agents);
    m_alerts.setAgents(agents);
}

void AgentsSource::hook(const HookEvent &event)
{
    m_alerts.hook(event);
    refresh();
}

void AgentsSource::scan()
{
    if (m_scanning)
        return;
    struct Found {
        QList<ToolProcess> tools;
        std::optional<QList<Agent>> listing;
    };
    m_scanning = true;
    publish();
    const bool hasClaude = m_needs.tools.toolInstalled(u"claude"_s);
    inBackground(
        m_needs.background, this,
        [&tools = m_needs.tools, &files = m_needs.files, home = m_needs.places.home, hasClaude] {
            return Found{scanTools(tools), hasClaude ? loadAgents(tools, files, home) : std::nullopt};
        },
        [this, hasClaude, begun = m_needs.clock.now()](const Found &found) {
            m_tools = found.tools;
            m_scanning = false;
            m_lastScan = m_needs.clock.wallTime();
            if (hasClaude)
                apply(found.listing, begun);
            else
                publish();
        });
}

void AgentsSource::publish(Announce announce)
{
    Published next{m_sessions.publish(), m_state,        m_tools,   m_scanning,      scannedText(),  offersHooks(),
                   hooksInstalled(),     needsUpgrade(), hearing(), goesPastProxy(), m_hooks.error()};
    QList<RowModel::Row> tools;
    for (const ToolProcess &tool : m_tools)
        tools.append(toolRow(tool));

    const bool same = next == m_published;
    m_published = std::move(next);
    m_toolRows.setRows(tools);
    if (!same || announce == Announce::Always)
        Q_EMIT changed();
}

bool AgentsSource::offersHooks() const
{
    return m_state == SourceState::ready() && m_needs.prefs.isOn(Prefs::Module::Agents) && !m_hooks.installed();
}

SourceState AgentsSource::hearing() const
{
    return m_needs.prefs.isOn(Prefs::Module::Agents) ? m_hooks.hearing() : SourceState::ready();
}

QString AgentsSource::scannedText() const
{
    return m_lastScan ? tr("Scanned %1").arg(timeAgo(*m_lastScan, m_needs.clock.wallTime())) : QString();
}

void AgentsSource::dismiss(const QString &id)
{
    m_sessions.dismiss(id);
    publish(Announce::Always);
}

void AgentsSource::clearWaiting()
{
    m_sessions.dismissWaiting();
    publish(Announce::Always);
}

void AgentsSource::toggleWaiting()
{
    m_sessions.setExpanded(!m_sessions.expanded());
    publish();
}

void AgentsSource::resume(const QString &id) const
{
    if (const Agent *agent = m_sessions.find(id))
        m_needs.terminal.resumeClaude(agent->sessionId, agent->cwd);
}

QString AgentsSource::terminalName() const
{
    return TerminalApp::name(m_needs.terminal.current());
}

void AgentsSource::openFolder(const QString &id) const
{
    if (const Agent *agent = m_sessions.find(id); agent && agent->cwd)
        m_needs.workspace.showInFileManager(*agent->cwd);
}

} // namespace velto
