#include "Hub/Hub.h"

#include "Core/TerminalApp.h"
#include "Feeds/Calendar/GoogleCalendar.h"
#include "Feeds/Everyday/EverydaySource.h"
#include "Feeds/Glances/GlanceSource.h"
#include "Feeds/Signals/SignalsSource.h"
#include "Feeds/Work/WorkSource.h"
#include "Platform/Applications.h"
#include "Platform/Clock.h"
#include "Platform/Workspace.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosSource.h"

#include <algorithm>

namespace velto {

namespace {

constexpr std::chrono::seconds kRefreshInterval{45};

} // namespace

Hub::Hub(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
    , m_peeks(needs.clock, needs.accessibility)
    , m_sources({{Tab::Home, &needs.home},
                 {Tab::Todos, &needs.todos},
                 {Tab::Agents, &needs.agents},
                 {Tab::Quillbox, &needs.quillbox},
                 {Tab::Connect, &needs.connect}})
    , m_updated(needs.clock.wallTime())
{
    followSources();
    m_needs.agents.setOtherMac(m_needs.quillbox.otherMacRows());
    m_needs.everyday.waitingAgents = [this] {
        return m_needs.prefs.isOn(Prefs::Module::Agents) ? m_needs.agents.waitingCount() : 0;
    };

    refresh(false);
    checkRecording();
    connect(&m_needs.applications, &Applications::runningChanged, this, &Hub::checkRecording);
    m_tick = m_needs.clock.every(kRefreshInterval, [this] { refresh(false); });
}

Hub::~Hub()
{
    m_needs.everyday.waitingAgents = [] { return 0; }; // Everyday outlives the Hub
}

void Hub::followSources()
{
    connect(&m_peeks, &PeekQueue::onShowChanged, this, [this] {
        Q_EMIT peekChanged();
        Q_EMIT changed();
    });
    for (const auto &[tab, source] : m_sources) {
        connect(source, &VeltoSource::tabWanted, this, &Hub::open);
        connect(source, &VeltoSource::refreshWanted, this, [this] { refresh(true); });
        connect(source, &VeltoSource::peekWanted, this, &Hub::show);
    }
    connect(&m_needs.everyday, &EverydaySource::peekWanted, this, &Hub::show);
    connect(&m_needs.agents, &AgentsSource::peekWithdrawn, &m_peeks, &PeekQueue::withdraw);
    connect(&m_needs.agents, &AgentsSource::peeksRetracted, &m_peeks, &PeekQueue::retract);
    for (const VeltoSource *source : std::initializer_list<VeltoSource *>{&m_needs.todos, &m_needs.agents, &m_needs.quillbox})
        connect(source, &VeltoSource::changed, this, &Hub::sourceChanged);
    connect(&m_needs.signalsSource, &SignalsSource::changed, this, &Hub::sourceChanged);
    connect(&m_needs.everyday, &EverydaySource::changed, this, &Hub::sourceChanged);
    connect(&m_needs.work, &WorkSource::changed, this, &Hub::sourceChanged);
    connect(&m_needs.glances, &GlanceSource::changed, this, &Hub::sourceChanged);
    connect(&m_needs.home, &VeltoSource::changed, this, &Hub::changed);
    connect(&m_needs.quillbox, &QuillboxSource::changed, this, [this] {
        fixSelection(); // Quillbox's tab comes and goes with its connection
    });
    connect(&m_needs.google, &GoogleCalendar::changed, this,
            [this] { m_needs.clock.post(this, [this] { m_needs.everyday.loadCalendar(); }); });
    connect(&m_needs.prefs, &Prefs::changed, this, [this] {
        m_needs.clock.post(this, [this] {
            fixSelection();
            sourceChanged();
        });
    });
}

void Hub::sourceChanged()
{
    for (const auto &[tab, source] : m_sources)
        source->worldChanged();
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
            return m_needs.prefs.isOn(Prefs::Module::Todos);
        case Tab::Agents:
            return m_needs.prefs.isOn(Prefs::Module::Agents);
        case Tab::Quillbox:
            return m_needs.prefs.isOn(Prefs::Module::Todos) && m_needs.quillbox.mode().isHub();
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

bool Hub::takeKey(QKeyCombination key)
{
    return std::ranges::any_of(tabs(), [&](Tab tab) { return source(tab)->takeKey(key, tab == m_selected); });
}

bool Hub::unfinished() const
{
    return std::ranges::any_of(tabs(), [this](Tab tab) { return source(tab)->unfinished(); });
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
    if (const QList<Tab> visible = tabs(); !visible.contains(m_selected))
        select(visible.value(0, Tab::Home));
}

void Hub::refresh(bool force)
{
    if (m_needs.prefs.isOn(Prefs::Module::Todos)) {
        m_needs.quillbox.refresh();
        m_needs.todos.refresh();
    }
    if (m_needs.prefs.isOn(Prefs::Module::Agents))
        m_needs.agents.refresh();
    m_needs.signalsSource.refresh(force);
    m_needs.everyday.refresh();
    m_needs.work.refresh(force);
    if (force)
        m_needs.glances.refresh();
    fixSelection();
    m_needs.home.worldChanged(); // its greeting and ages change with the time alone
    m_updated = m_needs.clock.wallTime();
    Q_EMIT updatedChanged();
}

void Hub::checkRecording()
{
    const bool recording = m_needs.prefs.quietWhileRecording() && m_needs.applications.recorderRuns();
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

void Hub::peekMoved()
{
    m_peeks.moved();
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
        m_needs.terminal.resumeClaude(pressed.resume, pressed.cwd);
    } else if (pressed.url) {
        m_needs.workspace.open(*pressed.url);
    } else {
        if (pressed.tab)
            open(*pressed.tab);
        Q_EMIT panelWanted();
    }
    dismissPeek();
}

} // namespace velto
