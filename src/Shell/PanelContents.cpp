#include "Shell/PanelContents.h"

#include "Core/Prefs.h"
#include "Core/Texts.h"
#include "Feeds/Everyday/EverydaySource.h"
#include "Hub/Hub.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosSource.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

PanelContents::PanelContents(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
    , m_tabs({"tab"_ba, "title"_ba, "symbol"_ba, "badge"_ba, "view"_ba, "store"_ba})
    , m_highlights({"chip"_ba, "symbol"_ba, "text"_ba, "tab"_ba})
{
    connect(&m_needs.hub, &Hub::changed, this, &PanelContents::update);
    connect(&m_needs.hub, &Hub::updatedChanged, this, &PanelContents::refreshed);
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
        m_needs.hub.open(*known);
}

void PanelContents::openAt(int place)
{
    const QList<Tab> tabs = m_needs.hub.tabs();
    if (place >= 0 && place < tabs.size())
        m_needs.hub.open(tabs.at(place));
}

void PanelContents::refresh()
{
    m_needs.hub.refresh(true);
    m_needs.quillbox.fetchAgain();
    m_needs.agents.scan();
}

void PanelContents::update()
{
    const Tab shown = m_always.value_or(m_needs.hub.selected());
    QList<Tab> visible = m_needs.hub.tabs();
    if (m_always && !visible.contains(shown))
        visible.insert(std::ranges::upper_bound(visible, shown), shown);
    QList<RowModel::Row> tabs;
    for (const Tab tab : visible) {
        VeltoSource *source = m_needs.hub.source(tab);
        tabs.append(
            {rawValue(tab), source->title(), source->symbol(), source->badge(), source->makeView(), QVariant::fromValue(source)});
    }
    m_tabs.setRows(tabs);

    QList<RowModel::Row> highlights;
    if (const int waiting = m_needs.prefs.isOn(Prefs::Module::Agents) ? m_needs.agents.waitingCount() : 0; waiting > 0)
        highlights.append({u"waiting"_s, u"hand.raised.fill"_s, tr("%1 waiting").arg(waiting), rawValue(Tab::Agents)});
    if (const int due = m_needs.prefs.isOn(Prefs::Module::Todos) ? m_needs.todos.badge() : 0; due > 0)
        highlights.append({u"due"_s, u"checklist"_s, tr("%1 due").arg(due), rawValue(Tab::Todos)});
    if (m_needs.prefs.isOn(Prefs::Module::Calendar) && m_needs.everyday.hasNextEvent())
        highlights.append({u"event"_s, u"calendar"_s, m_needs.everyday.nextEventText(), rawValue(Tab::Home)});
    m_highlights.setRows(highlights);

    show({int(visible.indexOf(shown)), m_needs.hub.recording(),
          highlights.isEmpty() && m_needs.hub.source(Tab::Home)->badge() == 0, labelOfRefresh()});
}

void PanelContents::refreshed()
{
    Shown now = m_now;
    now.refreshLabel = labelOfRefresh();
    show(now);
}

void PanelContents::show(const Shown &now)
{
    if (now == m_now)
        return;
    m_now = now;
    Q_EMIT changed();
}

QString PanelContents::labelOfRefresh() const
{
    return tr("Refresh · updated %1").arg(shortTime(m_needs.hub.updated()));
}

} // namespace velto
