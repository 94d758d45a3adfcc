#include "Core/Hub.h"

#include "Core/TerminalApp.h"
#include "Platform/Applications.h"
#include "Platform/Workspace.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Connect/ConnectSource.h"
#include "Tabs/Home/EverydaySource.h"
#include "Tabs/Home/GlanceSource.h"
#include "Tabs/Home/GoogleCalendar.h"
#include "Tabs/Home/HomeSource.h"
#include "Tabs/Home/SignalsSource.h"
#include "Tabs/Home/WorkSource.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosSource.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kRefreshInterval{45};

constexpr std::array kRecorders{
    "com.obsproject.obs-studio"_L1,   "com.timpler.screenstudio"_L1, "net.telestream.screenflow10"_L1,
    "net.telestream.screenflow11"_L1, "com.loom.desktop"_L1,         "fm.riverside.desktop"_L1,
    "com.cleanshot.recorder"_L1,      "com.ecamm.EcammLive"_L1,      "com.descript.beachcube"_L1,
};

} // namespace

Hub::Hub(Needs needs, QObject *parent)
    : QObject(parent)
    , m_clock(needs.clock)
    , m_applications(needs.applications)
    , m_workspace(needs.workspace)
    , m_prefs(needs.prefs)
    , m_terminal(needs.terminal)
    , m_peeks(needs.clock, needs.accessibility)
    , m_quillbox(std::move(needs.quillbox))
    , m_todos(std::move(needs.todos))
    , m_agents(std::move(needs.agents))
    , m_signals(std::move(needs.signalsSource))
    , m_everyday(std::move(needs.everyday))
    , m_work(std::move(needs.work))
    , m_glances(std::move(needs.glances))
    , m_updated(m_clock.wallTime())
{
    m_home = needs.makeHome(*this);
    m_connect = needs.makeConnect(*this);
    m_sources = {{Tab::Home, m_home.get()},
                 {Tab::Todos, m_todos.get()},
                 {Tab::Agents, m_agents.get()},
                 {Tab::Quillbox, m_quillbox.get()},
                 {Tab::Connect, m_connect.get()}};
    m_lastTabs = tabs();
    followSources(needs.google);
    m_agents->setOtherMac(m_quillbox->otherMacRows());
    const auto raise = [this](Peek peek) { show(std::move(peek)); };
    m_quillbox->onPeek = raise;
    m_agents->onPeek = raise;
    m_everyday->onPeek = raise;
    m_everyday->waitingAgents = [this] { return m_prefs.isOn(Prefs::Module::Agents) ? m_agents->waitingCount() : 0; };

    refresh(false);
    checkRecording();
    connect(&m_applications, &Applications::runningChanged, this, &Hub::checkRecording);
    m_tick = m_clock.every(kRefreshInterval, [this] { refresh(false); });
}

Hub::~Hub() = default;

void Hub::followSources(GoogleCalendar &google)
{
    connect(&m_peeks, &PeekQueue::onShowChanged, this, [this] {
        Q_EMIT peekChanged();
        Q_EMIT changed();
    });
    for (const VeltoSource *source : std::initializer_list<VeltoSource *>{m_todos.get(), m_agents.get(), m_quillbox.get()})
        connect(source, &VeltoSource::changed, this, &Hub::sourceChanged);
    connect(m_signals.get(), &SignalsSource::changed, this, &Hub::sourceChanged);
    connect(m_everyday.get(), &EverydaySource::changed, this, &Hub::sourceChanged);
    connect(m_work.get(), &WorkSource::changed, this, &Hub::sourceChanged);
    connect(m_glances.get(), &GlanceSource::changed, this, &Hub::sourceChanged);
    connect(m_home.get(), &HomeSource::changed, this, &Hub::changed); // by a minute that has passed
    connect(m_quillbox.get(), &QuillboxSource::changed, this, [this] {
        fixSelection(); // its tab comes and goes with the connection
    });
    connect(&google, &GoogleCalendar::changed, this, [this] { m_clock.post(this, [this] { m_everyday->loadCalendar(); }); });
    connect(&m_prefs, &Prefs::changed, this, [this] {
        m_clock.post(this, [this] {
            fixSelection();
            sourceChanged();
        });
    });
}

void Hub::sourceChanged()
{
    m_home->worldChanged();
    m_connect->worldChanged();
    Q_EMIT changed();
}

VeltoSource *Hub::source(Tab tab) const
{
    const auto found = m_sources.find(tab);
    return found == m_sources.end() ? nullptr : found->second;
}

QList<Tab> Hub::tabs() const
{
    const auto visible = [this](Tab tab) {
        switch (tab) {
        case Tab::Todos:
            return m_prefs.isOn(Prefs::Module::Todos);
        case Tab::Agents:
            return m_prefs.isOn(Prefs::Module::Agents);
        case Tab::Quillbox:
            return m_prefs.isOn(Prefs::Module::Todos) && m_quillbox->mode().isHub();
        case Tab::Home:
        case Tab::Connect:
            break;
        }
        return true;
    };
    QList<Tab> result;
    for (const Tab tab : kAllTabs) {
        if (source(tab) && visible(tab))
            result.append(tab);
    }
    return result;
}

void Hub::open(Tab tab)
{
    const QList<Tab> visible = tabs();
    select(visible.contains(tab) ? tab : visible.value(0, Tab::Home));
}

void Hub::select(Tab tab)
{
    if (tab == m_selected)
        return;
    m_selected = tab;
    Q_EMIT selectedChanged();
    Q_EMIT changed();
}

void Hub::fixSelection()
{
    const QList<Tab> visible = tabs();
    if (visible != m_lastTabs) {
        m_lastTabs = visible;
        Q_EMIT tabsChanged();
    }
    if (!visible.contains(m_selected))
        select(visible.value(0, Tab::Home));
}

void Hub::refresh(bool force)
{
    if (m_prefs.isOn(Prefs::Module::Todos)) {
        m_quillbox->refresh();
        m_todos->refresh();
    }
    if (m_prefs.isOn(Prefs::Module::Agents))
        m_agents->refresh();
    m_signals->refresh(force);
    m_everyday->refresh();
    m_work->refresh(force);
    if (force)
        m_glances->refresh();
    fixSelection();
    m_updated = m_clock.wallTime();
    Q_EMIT updatedChanged();
}

void Hub::checkRecording()
{
    const QStringList running = m_applications.running();
    const bool recording = m_prefs.quietWhileRecording()
        && std::ranges::any_of(kRecorders, [&running](QLatin1StringView id) { return running.contains(id); });
    if (recording == m_recording)
        return;
    m_recording = recording;
    if (m_recording)
        dismissPeek();
    Q_EMIT recordingChanged();
    Q_EMIT changed();
}

void Hub::show(Peek peek)
{
    m_peeks.show(std::move(peek), m_recording);
}

void Hub::dismissPeek()
{
    m_peeks.dismiss();
}

void Hub::pressBegan(const QUuid &id)
{
    m_peeks.pressBegan(id);
}

void Hub::answer(const QUuid &id, bool allowed)
{
    m_peeks.answer(id, allowed);
}

void Hub::act(const QUuid &id)
{
    if (!m_peeks.takesPress(id))
        return;
    const Peek pressed = peek();
    if (pressed.resume) {
        m_terminal.resumeClaude(pressed.resume, pressed.cwd);
    } else if (pressed.url) {
        m_workspace.open(*pressed.url);
    } else {
        if (pressed.tab)
            open(*pressed.tab);
        Q_EMIT panelWanted();
    }
    dismissPeek();
}

} // namespace velto
