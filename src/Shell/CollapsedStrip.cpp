#include "Shell/CollapsedStrip.h"

#include "Core/Hub.h"
#include "Core/Prefs.h"
#include "Tabs/Agents/AgentsSource.h"

using namespace Qt::StringLiterals;

namespace velto {

CollapsedStrip::CollapsedStrip(const Hub &hub, QObject *parent)
    : QObject(parent)
    , m_hub(hub)
    , m_now(read())
{
    connect(&m_hub, &Hub::changed, this, &CollapsedStrip::update);
}

CollapsedStrip::Shown CollapsedStrip::read() const
{
    Shown shown;
    const bool agentsOn = m_hub.prefs().isOn(Prefs::Module::Agents);
    if (agentsOn) {
        shown.running = m_hub.agents()->runningCount();
        shown.waiting = m_hub.agents()->waitingCount();
    }

    if (m_hub.recording())
        shown.left = Left::Recording;
    else if (shown.running > 0)
        shown.left = Left::Running;
    if (shown.waiting > 0)
        shown.right = Right::Waiting;

    QStringList facts;
    if (agentsOn) {
        QString agents = tr("%1 agents working").arg(shown.running);
        if (shown.waiting > 0)
            agents += tr(", %1 waiting for you").arg(shown.waiting);
        facts.append(agents);
    }
    shown.spoken = tr("Velto. %1").arg(facts.isEmpty() ? tr("Nothing to report") : facts.join(u". "_s));

    if (shown.waiting > 0) {
        shown.summarySymbol = u"hand.raised.fill"_s;
        shown.summaryText = shown.waiting == 1 ? tr("%1 agent need your attention").arg(shown.waiting)
                                               : tr("%1 agents need your attention").arg(shown.waiting);
    } else if (shown.running > 0) {
        shown.summarySymbol = u"sparkle"_s;
        shown.summaryText =
            shown.running == 1 ? tr("%1 agent working").arg(shown.running) : tr("%1 agents working").arg(shown.running);
    } else {
        shown.summarySymbol = u"sparkles"_s;
        shown.summaryText = tr("Nothing needs you right now");
    }
    return shown;
}

void CollapsedStrip::update()
{
    Shown shown = read();
    if (shown == m_now)
        return;
    m_now = std::move(shown);
    Q_EMIT changed();
}

} // namespace velto
