#include "Core/Hub.h"

#include "Core/TerminalApp.h"
#include "Platform/Applications.h"
#include "Platform/Workspace.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Quillbox/QuillboxSource.h"

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
    , m_agents(std::move(needs.agents))
    , m_updated(m_clock.wallTime())
{
    m_sources = {{Tab::Agents, m_agents.get()}, {Tab::Quillbox, m_quillbox.get()}};
    m_lastTabs = tabs();

    connect(&m_peeks, &PeekQueue::onShowChanged, this, [this] {
        Q_EMIT peekChanged();
        Q_EMIT changed();
    });
    for (const auto &[tab, source] : m_sources)
        connect(source, &VeltoSource::changed, this, &Hub::changed);
    connect(&m_prefs, &Prefs::changed, this, [this] {
        m_clock.post(this, [this] {
            fixSelection();
            Q_EMIT changed();
        });
    });
    connect(m_quillbox.get(), &QuillboxSource::changed, this, [this] {
        fixSelection(); // its tab comes and goes with the connection
    });
    m_agents->setOtherMac(m_quillbox->otherMacRows());
    m_quillbox->onPeek = [this](Peek peek) { show(std::move(peek)); };
    m_agents->onPeek = [this](Peek peek) { show(std::move(peek)); };

    refresh(false);
    checkRecording();
    connect(&m_applications, &Applications::runningChanged, this, &Hub::checkRecording);
    m_tick = m_clock.every(kRefreshInterval, [this] { refresh(false); });
}

Hub::~Hub() = default;

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

void Hub::refresh(bool)
{
    if (m_prefs.isOn(Prefs::Module::Todos))
        m_quillbox->refresh();
    if (m_prefs.isOn(Prefs::Module::Agents))
        m_agents->refresh();
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
