#include "Tabs/Agents/AgentAlerts.h"

#include "Core/Prefs.h"
#include "Core/Texts.h"
#include "Platform/Applications.h"
#include "Platform/Clock.h"

#include <QPointer>
#include <QSet>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kDonePeekMilliseconds = 180'000;
/// As long as the installed command lets its `curl` wait.
constexpr std::chrono::seconds kAskerPatience{35};
/// How soon a listing is wanted after a question came or went, and how often while one waits. A listing costs up to a second of
/// a core.
constexpr std::chrono::seconds kFirstLook{2};
constexpr std::chrono::seconds kNextLook{8};
/// How long after a session's Stop a listing may still call it working.
constexpr std::chrono::seconds kListingLags{3};

/// Whether a "done" at this moment still suppresses the next one. A moment in the future was written before the clock was set
/// back, and suppresses nothing. Both in UTC: in local time, every comparison makes the system look up the time zone.
bool isLately(const QDateTime &moment, const QDateTime &now)
{
    const qint64 passed = moment.msecsTo(now);
    return passed >= 0 && passed < kDonePeekMilliseconds;
}

} // namespace

AgentAlerts::AgentAlerts(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
{
}

void AgentAlerts::compare(const QList<Agent> &listing, Instant begun)
{
    if (m_latestCompared && begun < *m_latestCompared)
        return;
    m_latestCompared = begun;
    QMap<QString, Agent> byId;
    for (const Agent &agent : listing)
        byId.insert(agent.id, agent);
    takeBack(listing, begun);
    // Pruned here and not for each session that is done: there may be thousands at once.
    m_lastDonePeek.removeIf(
        [now = m_needs.clock.wallTime().toUTC()](const auto &entry) { return !isLately(entry.value(), now); });
    if (const auto previous = std::exchange(m_previous, std::move(byId))) {
        announceSteps(*previous, listing);
        watchTurns(*previous, listing);
    }
}

void AgentAlerts::hook(const HookEvent &event)
{
    const QString name = nameFor(event);
    const QString session = event.sessionId.value_or(name);
    if (event.event == "Stop"_L1 || event.event == "SessionEnd"_L1) {
        withdraw(m_questions.of(session));
        retract(Peek::News::NeedsYou, {session});
    }
    if (event.event == "Stop"_L1) {
        m_saidDone.insert(session, m_needs.clock.now());
        donePeek(session, tr("%1 is done").arg(name), event.sessionId, event.cwd);
    } else if (event.event == "Notification"_L1) {
        notified(event, name);
    }
}

void AgentAlerts::notified(const HookEvent &event, const QString &name)
{
    const QString session = event.sessionId.value_or(name);
    const auto now = m_needs.clock.now();
    // Claude Code announces a question again 6 seconds after it asked.
    if (event.notification == u"permission_prompt"_s && m_questions.speaksFor(session, now))
        return;
    Peek peek = needsYou(event.message ? *event.message : tr("%1 needs you").arg(name), session);
    if (event.message && (event.sessionId || event.cwd))
        peek.beside = name;
    peek.resume = event.sessionId;
    peek.cwd = event.cwd;
    // The same words from two sessions at once are shown once, so the second session is left for the listing to name.
    m_notices.removeIf([now](const auto &entry) { return now - entry.value().at > OpenQuestions::kAftermath; });
    if (std::ranges::none_of(m_notices, [&peek](const Notice &notice) { return notice.text == peek.text; })
        || m_notices.contains(session))
        m_notices.insert(session, {peek.text, now});
    Q_EMIT peekWanted(peek);
}

void AgentAlerts::permission(const HookEvent &event, HookListener::QuestionId asker, const HookListener::Reply &reply)
{
    const QString name = nameFor(event);
    const QString session = event.sessionId.value_or(QString());
    // A session asks one thing at a time: its previous question is settled, and it works again.
    withdraw(m_questions.of(session));
    retract(Peek::News::NeedsYou, {session});
    retract(Peek::News::Finished, {session});
    const bool tried = m_expectsTrial && !event.sessionId;
    m_expectsTrial = m_expectsTrial && !tried;
    const bool wanted = m_needs.prefs.isOn(Prefs::Module::Agents) && !m_needs.applications.terminalInFront();
    if (!wanted && !tried) {
        reply(std::nullopt);
        return;
    }
    if (event.tool == u"AskUserQuestion"_s) {
        // Claude asks the user a question that wants an answer in words. Allowing that from here would skip it and tell the
        // model that nobody answered, so it is left to the terminal at once.
        reply(std::nullopt);
        m_questions.announced(session, m_needs.clock.now());
        Peek peek = needsYou(tr("%1 needs you").arg(name), session);
        peek.resume = event.sessionId;
        peek.cwd = event.cwd;
        Q_EMIT peekWanted(peek);
        return;
    }
    ask(event, name, asker, reply);
}

void AgentAlerts::ask(const HookEvent &event, const QString &name, HookListener::QuestionId asker,
                      const HookListener::Reply &reply)
{
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
    peek.session = event.sessionId.value_or(QString());
    peek.patience = kAskerPatience;
    peek.lapsed = tr("%1 asks in its terminal").arg(name);
    peek.decide = [self = QPointer(this), id = peek.id, name, reply](std::optional<bool> answer) {
        const bool inTime = reply(answer);
        if (self)
            self->questionEnded(id, name, answer, inTime);
    };
    peek.question = Question{name, event.cwd, event.wholeTool, event.toolInput, event.toolIsCut};
    m_questions.add({asker, peek.id, peek.session, m_needs.clock.now(), m_needs.clock.wallTime().toMSecsSinceEpoch()});
    lookAgainIn(kFirstLook);
    Q_EMIT notesWanted(true);
    Q_EMIT peekWanted(peek);
}

void AgentAlerts::questionEnded(const QUuid &peek, const QString &name, std::optional<bool> answer, bool inTime)
{
    m_questions.close(peek, answer.has_value(), m_needs.clock.now());
    lookAgainIn(kFirstLook);
    if (m_questions.isEmpty())
        Q_EMIT notesWanted(false);
    if (!answer || inTime)
        return;
    Peek late;
    late.symbol = u"exclamationmark.circle"_s;
    late.text = tr("Too late: %1 no longer waits for that answer").arg(name);
    late.tone = Peek::Tone::Warn;
    late.tab = Tab::Agents;
    Q_EMIT peekWanted(late);
}

void AgentAlerts::withdrawn(HookListener::QuestionId asker)
{
    if (const auto peek = m_questions.askedBy(asker))
        withdraw({*peek});
}

/// A session may be answered in its terminal, which no hook reports: while a question waits, listings are wanted. Seldom, since
/// Claude Code's notes report it sooner where there are any.
void AgentAlerts::lookAgainIn(std::chrono::seconds delay)
{
    m_lookAgain = m_needs.clock.after(delay, [this] {
        Q_EMIT listingWanted();
        if (!m_questions.isEmpty())
            lookAgainIn(kNextLook);
    });
}

void AgentAlerts::announceSteps(const QMap<QString, Agent> &previous, const QList<Agent> &listing)
{
    const auto now = m_needs.clock.now();
    QSet<QString> ids;
    for (const Agent &agent : listing) {
        ids.insert(agent.id);
        const auto before = previous.constFind(agent.id);
        if (before == previous.cend() || !before->isWorking() || !agent.isBlocked())
            continue;
        const auto notice = m_notices.constFind(agent.session());
        const bool told = m_questions.speaksFor(agent.session(), now)
            || (notice != m_notices.cend() && now - notice->at <= OpenQuestions::kAftermath);
        if (told)
            continue;
        Peek peek = needsYou(tr("%1 needs you").arg(agent.title()), agent.session());
        peek.resume = agent.sessionId;
        peek.cwd = agent.cwd;
        Q_EMIT peekWanted(peek);
    }
    // A session that was working and has left the listing has finished.
    for (const Agent &agent : previous) {
        if (agent.isWorking() && !ids.contains(agent.id))
            donePeek(agent.id, tr("%1 finished").arg(agent.title()), agent.sessionId, agent.cwd);
    }
}

/// Takes back what a listing shows to be over or untrue.
void AgentAlerts::takeBack(const QList<Agent> &listing, Instant begun)
{
    withdraw(m_questions.overBy(listing, begun));
    // A hook call reports that a session is done a moment before the listing does.
    m_saidDone.removeIf([begun](const auto &entry) { return begun - entry.value() >= kListingLags; });
    QSet<QString> working;
    QSet<QString> certain;
    for (const Agent &agent : listing) {
        if (!agent.isWorking())
            continue;
        working.insert(agent.session());
        if (!m_saidDone.contains(agent.session()))
            certain.insert(agent.session());
    }
    retract(Peek::News::NeedsYou, working);
    retract(Peek::News::Finished, certain);
}

void AgentAlerts::watchTurns(const QMap<QString, Agent> &previous, const QList<Agent> &listing)
{
    const auto now = m_needs.clock.now();
    const auto turns = std::exchange(m_turns, {});
    for (const Agent &agent : listing) {
        if (agent.isWorking())
            m_turns.insert(agent.id, turns.value(agent.id, now));
    }
    for (auto turn = turns.cbegin(); turn != turns.cend(); ++turn) {
        if (!m_turns.contains(turn.key()) && previous.contains(turn.key()))
            Q_EMIT turnEnded(*turn);
    }
}

void AgentAlerts::retract(Peek::News news, const QSet<QString> &sessions)
{
    if (!sessions.isEmpty())
        Q_EMIT peeksRetracted(news, sessions);
}

void AgentAlerts::withdraw(const QList<QUuid> &questions)
{
    for (const QUuid &question : questions)
        Q_EMIT peekWithdrawn(question);
}

Peek AgentAlerts::needsYou(const QString &text, const QString &session)
{
    Peek peek;
    peek.symbol = u"hand.raised.fill"_s;
    peek.text = text;
    peek.tone = Peek::Tone::Warn;
    peek.news = Peek::News::NeedsYou;
    peek.session = session;
    return peek;
}

void AgentAlerts::donePeek(const QString &session, const QString &text, const std::optional<QString> &resume,
                           const std::optional<QString> &cwd)
{
    if (!m_needs.prefs.peekOnFinish())
        return;
    const QDateTime now = m_needs.clock.wallTime().toUTC();
    const auto last = m_lastDonePeek.constFind(session);
    const bool saidLately = last != m_lastDonePeek.cend() && isLately(*last, now);
    if (saidLately || m_needs.applications.terminalInFront())
        return;
    m_lastDonePeek.insert(session, now);

    Peek peek;
    peek.symbol = u"checkmark.circle.fill"_s;
    peek.text = text;
    peek.tone = Peek::Tone::Good;
    peek.resume = resume;
    peek.cwd = cwd;
    peek.news = Peek::News::Finished;
    peek.session = resume.value_or(session);
    Q_EMIT peekWanted(peek);
}

QString AgentAlerts::nameFor(const HookEvent &event) const
{
    const auto agent = std::ranges::find(m_agents, event.sessionId, &Agent::sessionId);
    if (agent != m_agents.end())
        return agent->title();
    return event.cwd ? lastPathComponent(*event.cwd) : tr("An agent");
}

} // namespace velto
