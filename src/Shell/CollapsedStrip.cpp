#include "Shell/CollapsedStrip.h"

#include "Core/Prefs.h"
#include "Feeds/Everyday/EverydaySource.h"
#include "Hub/Hub.h"
#include "Platform/Clock.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Todos/TodosSource.h"

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kSoon = 3600; // seconds

} // namespace

CollapsedStrip::CollapsedStrip(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
    , m_now(read())
{
    connect(&m_needs.hub, &Hub::changed, this, &CollapsedStrip::update);
}

bool CollapsedStrip::isOn(Prefs::Module module) const
{
    return m_needs.prefs.isOn(module);
}

/// kSoon if no event is near enough to show.
qint64 CollapsedStrip::secondsToEvent() const
{
    const std::optional<NextEvent> event = isOn(Prefs::Module::Calendar) ? m_needs.everyday.nextEvent() : std::nullopt;
    return event ? std::min(m_needs.clock.wallTime().secsTo(event->start), kSoon) : kSoon;
}

// The first that applies wins; the rest goes unseen until it ends.
void CollapsedStrip::readLeft(Shown &shown) const
{
    const EverydaySource &everyday = m_needs.everyday;
    const qint64 toEvent = secondsToEvent();
    if (m_needs.hub.recording()) {
        shown.left = Left::Recording;
    } else if (isOn(Prefs::Module::Focus) && everyday.focusing()) {
        shown.left = Left::Focus;
        shown.leftText = everyday.focusRemaining();
    } else if (shown.todos > 0) {
        shown.left = Left::Todos;
    } else if (toEvent < kSoon) {
        shown.left = Left::Event;
        shown.leftText = toEvent < 0 ? tr("now") : tr("%1m").arg(toEvent / 60 + 1);
    } else if (shown.running > 0) {
        shown.left = Left::Running;
    }
}

void CollapsedStrip::readRight(Shown &shown) const
{
    // These count under the dot of a recording too, which doesn't show them.
    const bool focusing = isOn(Prefs::Module::Focus) && m_needs.everyday.focusing();
    const bool leftBusy = focusing || shown.todos > 0 || secondsToEvent() < kSoon;
    if (shown.waiting > 0)
        shown.right = Right::Waiting;
    else if (shown.running > 0 && leftBusy)
        shown.right = Right::Working;
    else if (isOn(Prefs::Module::Media) && m_needs.everyday.playing())
        shown.right = Right::Playing;
}

QString CollapsedStrip::spokenFor(const Shown &shown) const
{
    QStringList facts;
    if (m_needs.everyday.focusing())
        facts.append(tr("Focus, %1 left").arg(m_needs.everyday.focusRemaining()));
    if (shown.todos > 0) {
        QString todos = tr("%1 todos due").arg(shown.todos);
        if (shown.overdueTodos > 0)
            todos += tr(", %1 overdue").arg(shown.overdueTodos);
        facts.append(todos);
    }
    if (isOn(Prefs::Module::Agents)) {
        QString agents = tr("%1 agents working").arg(shown.running);
        if (shown.waiting > 0)
            agents += tr(", %1 waiting for you").arg(shown.waiting);
        facts.append(agents);
    }
    return tr("Velto. %1").arg(facts.isEmpty() ? tr("Nothing to report") : facts.join(u". "_s));
}

CollapsedStrip::Shown CollapsedStrip::read() const
{
    Shown shown;
    if (isOn(Prefs::Module::Agents)) {
        shown.running = m_needs.agents.runningCount();
        shown.waiting = m_needs.agents.waitingCount();
    }
    if (isOn(Prefs::Module::Todos)) {
        shown.todos = m_needs.todos.badge();
        shown.overdueTodos = m_needs.todos.overdueCount();
    }
    readLeft(shown);
    readRight(shown);
    // Music alone doesn't keep the strip wide.
    shown.quiet = shown.left == Left::Nothing && (shown.right == Right::None || shown.right == Right::Playing);
    shown.spoken = spokenFor(shown);
    summarize(shown);
    return shown;
}

void CollapsedStrip::summarize(Shown &shown) const
{
    if (shown.waiting > 0) {
        shown.summarySymbol = u"hand.raised.fill"_s;
        shown.summaryText = shown.waiting == 1 ? tr("%1 agent need your attention").arg(shown.waiting)
                                               : tr("%1 agents need your attention").arg(shown.waiting);
        shown.summaryTone = Tone::Waiting;
    } else if (shown.todos > 0) {
        shown.summarySymbol = u"checklist"_s;
        shown.summaryText = shown.todos == 1 ? tr("%1 todo due").arg(shown.todos) : tr("%1 todos due").arg(shown.todos);
        shown.summaryTone = shown.overdueTodos > 0 ? Tone::Overdue : Tone::Info;
    } else if (secondsToEvent() < kSoon) {
        shown.summarySymbol = u"calendar"_s;
        shown.summaryText = m_needs.everyday.nextEventText();
    } else if (shown.running > 0) {
        shown.summarySymbol = u"sparkle"_s;
        shown.summaryText =
            shown.running == 1 ? tr("%1 agent working").arg(shown.running) : tr("%1 agents working").arg(shown.running);
    } else {
        shown.summarySymbol = u"sparkles"_s;
        shown.summaryText = tr("Nothing needs you right now");
    }
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
