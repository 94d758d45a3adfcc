#include "Shell/PanelContents.h"

#include "Core/Hub.h"
#include "Core/Process.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Home/EverydaySource.h"
#include "Tabs/Home/HomeSource.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosSource.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

PanelContents::PanelContents(Hub &hub, QObject *parent)
    : QObject(parent)
    , m_hub(hub)
    , m_tabs({"tab"_ba, "title"_ba, "symbol"_ba, "badge"_ba, "view"_ba, "store"_ba})
    , m_highlights({"chip"_ba, "symbol"_ba, "text"_ba, "tab"_ba})
{
    connect(&m_hub, &Hub::changed, this, &PanelContents::update);
    connect(&m_hub, &Hub::updatedChanged, this, &PanelContents::update);
    update();
}

void PanelContents::showAlways(Tab tab)
{
    m_always = tab;
    update();
}

void PanelContents::open(const QString &tab)
{
    if (const auto known = tabFromRawValue(tab))
        m_hub.open(*known);
}

void PanelContents::openAt(int place)
{
    const QList<Tab> tabs = m_hub.tabs();
    if (place >= 0 && place < tabs.size())
        m_hub.open(tabs.at(place));
}

void PanelContents::refresh()
{
    m_hub.refresh(true);
    m_hub.quillbox()->fetchAgain();
    m_hub.agents()->scan();
}

void PanelContents::update()
{
    const Tab shown = m_always.value_or(m_hub.selected());
    QList<Tab> visible = m_hub.tabs();
    if (m_always && !visible.contains(shown))
        visible.insert(std::ranges::upper_bound(visible, shown), shown);
    QList<RowModel::Row> tabs;
    for (const Tab tab : visible) {
        VeltoSource *source = m_hub.source(tab);
        tabs.append(
            {rawValue(tab), source->title(), source->symbol(), source->badge(), source->makeView(), QVariant::fromValue(source)});
    }
    m_tabs.setRows(tabs);

    QList<RowModel::Row> highlights;
    if (const int waiting = m_hub.prefs().isOn(Prefs::Module::Agents) ? m_hub.agents()->waitingCount() : 0; waiting > 0)
        highlights.append({u"waiting"_s, u"hand.raised.fill"_s, tr("%1 waiting").arg(waiting), rawValue(Tab::Agents)});
    const Prefs &prefs = m_hub.prefs();
    if (const int due = prefs.isOn(Prefs::Module::Todos) ? m_hub.todos()->badge() : 0; due > 0)
        highlights.append({u"due"_s, u"checklist"_s, tr("%1 due").arg(due), rawValue(Tab::Todos)});
    if (prefs.isOn(Prefs::Module::Calendar) && m_hub.everyday()->hasNextEvent())
        highlights.append({u"event"_s, u"calendar"_s, m_hub.everyday()->nextEventText(), rawValue(Tab::Home)});
    m_highlights.setRows(highlights);

    const Shown now{int(visible.indexOf(shown)), m_hub.recording(), highlights.isEmpty() && m_hub.home()->badge() == 0,
                    tr("Refresh · updated %1").arg(shortTime(m_hub.updated()))};
    if (now == m_now)
        return;
    m_now = now;
    Q_EMIT changed();
}

} // namespace velto
