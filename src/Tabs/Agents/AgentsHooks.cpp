// What AgentsSource makes of events: the hook calls of Claude Code, the steps between two listings, and the Peeks of both.

#include "Core/Prefs.h"
#include "Core/Texts.h"
#include "Hooks/HookInstaller.h"
#include "Platform/Applications.h"
#include "Platform/Clock.h"
#include "Tabs/Agents/AgentsSource.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kDonePeekMilliseconds = 180'000;

constexpr std::array kTerminals{"com.apple.Terminal"_L1, "com.googlecode.iterm2"_L1, "com.mitchellh.ghostty"_L1,
                                "dev.warp.Warp-Stable"_L1};

} // namespace

void AgentsSource::readHooks()
{
    m_needsUpgrade = m_needs.installer.needsUpgrade();
    m_hooksInstalled = !m_needsUpgrade && m_needs.installer.present();
}

bool AgentsSource::offersHooks() const
{
    return m_state == SourceState::ready() && m_needs.prefs.isOn(Prefs::Module::Agents) && !m_hooksInstalled;
}

void AgentsSource::installHooks()
{
    m_hookError = m_needs.installer.install();
    if (!m_hookError) {
        m_hooksInstalled = true;
        m_needsUpgrade = false;
    }
    publish();
}

void AgentsSource::removeHooks()
{
    m_hookError = m_needs.installer.uninstall();
    if (!m_hookError) {
        m_hooksInstalled = false;
        m_needsUpgrade = false;
    }
    publish();
}

QString AgentsSource::preview() const
{
    return m_needs.installer.preview();
}

void AgentsSource::hook(const HookEvent &event)
{
    const QString name = nameFor(event);
    if (event.event == "Stop"_L1)
        donePeek(event.sessionId.value_or(name), tr("%1 is done").arg(name), event.sessionId, event.cwd);
    else if (event.event == "Notification"_L1)
        needsYouPeek(event.message ? *event.message : tr("%1 needs you").arg(name), event.sessionId, event.cwd);
    refresh();
}

void AgentsSource::permission(const HookEvent &event, const Peek::Decide &decide)
{
    if (!m_needs.prefs.isOn(Prefs::Module::Agents) || !onPeek || terminalInFront()) {
        decide(std::nullopt);
        return;
    }
    const QString name = nameFor(event);
    if (event.tool == u"AskUserQuestion"_s) {
        // Claude asks the user something and wants an answer in words. Allowing that from here would skip the question and
        // tell the model that nobody answered, so it is left to the terminal at once.
        decide(std::nullopt);
        needsYouPeek(tr("%1 needs you").arg(name), event.sessionId, event.cwd);
        return;
    }
    QStringList what;
    for (const auto &part : {event.tool, event.toolDetail}) {
        if (part)
            what.append(*part);
    }
    QString wanted = what.join(u' ');
    if (wanted.isEmpty())
        wanted = tr("needs permission");

    Peek peek;
    peek.symbol = u"lock.shield"_s;
    peek.text = name + ": "_L1 + wanted;
    peek.tone = Peek::Tone::Warn;
    peek.resume = event.sessionId;
    peek.cwd = event.cwd;
    peek.decide = decide;
    raise(std::move(peek));
}

void AgentsSource::diff(const QMap<QString, Agent> &previous, const QList<Agent> &listing)
{
    QSet<QString> ids;
    for (const Agent &agent : listing) {
        ids.insert(agent.id);
        const auto before = previous.constFind(agent.id);
        if (before != previous.cend() && before->isWorking() && agent.state == "blocked"_L1)
            needsYouPeek(tr("%1 needs you").arg(agent.title()), agent.sessionId, agent.cwd);
    }
    // A session that was working and has left the listing has finished.
    for (const Agent &agent : previous) {
        if (agent.isWorking() && !ids.contains(agent.id))
            donePeek(agent.id, tr("%1 finished").arg(agent.title()), agent.sessionId, agent.cwd);
    }
}

void AgentsSource::raise(Peek peek) const
{
    if (onPeek)
        onPeek(std::move(peek));
}

void AgentsSource::needsYouPeek(const QString &text, const std::optional<QString> &resume,
                                const std::optional<QString> &cwd) const
{
    Peek peek;
    peek.symbol = u"hand.raised.fill"_s;
    peek.text = text;
    peek.tone = Peek::Tone::Warn;
    peek.resume = resume;
    peek.cwd = cwd;
    raise(std::move(peek));
}

void AgentsSource::donePeek(const QString &session, const QString &text, const std::optional<QString> &resume,
                            const std::optional<QString> &cwd)
{
    if (!m_needs.prefs.peekOnFinish())
        return;
    const QDateTime now = m_needs.clock.wallTime();
    // A moment in the future was written before the clock was set back, and holds nothing off.
    m_lastDonePeek.removeIf([&now](const auto &entry) {
        const qint64 passed = entry.value().msecsTo(now);
        return passed < 0 || passed >= kDonePeekMilliseconds;
    });
    if (m_lastDonePeek.contains(session) || terminalInFront())
        return;
    m_lastDonePeek.insert(session, now);

    Peek peek;
    peek.symbol = u"checkmark.circle.fill"_s;
    peek.text = text;
    peek.tone = Peek::Tone::Good;
    peek.resume = resume;
    peek.cwd = cwd;
    raise(std::move(peek));
}

bool AgentsSource::terminalInFront() const
{
    const QString front = m_needs.applications.frontmost();
    return std::ranges::any_of(kTerminals, [&front](QLatin1StringView terminal) { return front == terminal; })
        || front.contains("Code"_L1) || front.contains("cursor"_L1);
}

QString AgentsSource::nameFor(const HookEvent &event) const
{
    const auto agent = std::ranges::find(m_agents, event.sessionId, &Agent::sessionId);
    if (agent != m_agents.end())
        return agent->title();
    return event.cwd ? lastPathComponent(*event.cwd) : tr("An agent");
}

} // namespace velto
