#pragma once

#include "Core/Peek.h"
#include "Hooks/HookEvent.h"
#include "Hooks/HookListener.h"
#include "Platform/Timer.h"
#include "Tabs/Agents/Agent.h"
#include "Tabs/Agents/OpenQuestions.h"

#include <QDateTime>
#include <QHash>
#include <QMap>
#include <QObject>
#include <QSet>
#include <optional>

namespace velto {

class Applications;
class Clock;
class Prefs;

/// What is worth a Peek: the hook calls of Claude Code, and the steps between one listing of its sessions and the next. Knows
/// which questions wait for the user, and what shows that they are over. UI thread only.
class AgentAlerts : public QObject {
    Q_OBJECT
public:
    /// What the alerts use; all of it outlives them.
    struct Needs {
        Clock &clock;
        Prefs &prefs;
        Applications &applications;
    };
    explicit AgentAlerts(const Needs &needs, QObject *parent = nullptr);

    /// These are the sessions that are known now; an event takes the name of its session from them.
    void setAgents(const QList<Agent> &agents) { m_agents = agents; }
    /// Compares a listing that was begun at that time with the one before. Right after the start there is none, and what waits
    /// already is no news. A listing that was begun before the last one is outdated, and isn't compared.
    void compare(const QList<Agent> &listing, Instant begun);
    void hook(const HookEvent &event);
    /// Asks the user, or leaves it to the terminal by an empty reply.
    void permission(const HookEvent &event, HookListener::QuestionId asker, const HookListener::Reply &reply);
    /// What Claude Code notes of its sessions now.
    void compare(const QList<SessionStatus> &notes) { withdraw(m_questions.overBy(notes)); }
    /// The asker of that question is gone.
    void withdrawn(HookListener::QuestionId asker);
    /// The next question of no session in particular is one that the user wants to try: it's shown also where a session's would
    /// be left to the terminal.
    void expectTrial() { m_expectsTrial = true; }

Q_SIGNALS:
    void peekWanted(const velto::Peek &peek);
    /// A question that was raised is over: its asker is gone, or was answered elsewhere.
    void peekWithdrawn(const QUuid &id);
    /// What was raised with this news is no longer true of these sessions.
    void peeksRetracted(velto::Peek::News news, const QSet<QString> &sessions);
    /// A listing may show how a question ended.
    void listingWanted();
    /// Whether Claude Code's notes may do so too, and sooner: as long as a question waits.
    void notesWanted(bool wanted);
    /// A session that had worked since then no longer does.
    void turnEnded(velto::Instant since);

private:
    void takeBack(const QList<Agent> &listing, Instant begun);
    void announceSteps(const QMap<QString, Agent> &previous, const QList<Agent> &listing);
    void watchTurns(const QMap<QString, Agent> &previous, const QList<Agent> &listing);
    void retract(Peek::News news, const QSet<QString> &sessions);
    void withdraw(const QList<QUuid> &questions);
    void notified(const HookEvent &event, const QString &name);
    void ask(const HookEvent &event, const QString &name, HookListener::QuestionId asker, const HookListener::Reply &reply);
    void questionEnded(const QUuid &peek, const QString &name, std::optional<bool> answer, bool inTime);
    void lookAgainIn(std::chrono::seconds delay);
    static Peek needsYou(const QString &text, const QString &session);
    void donePeek(const QString &session, const QString &text, const std::optional<QString> &resume,
                  const std::optional<QString> &cwd);
    QString nameFor(const HookEvent &event) const;

    Needs m_needs;
    QList<Agent> m_agents;
    bool m_expectsTrial = false;
    std::optional<QMap<QString, Agent>> m_previous; ///< the last listing by id; nothing until the first
    std::optional<Instant> m_latestCompared; ///< when that listing was begun
    QMap<QString, QDateTime> m_lastDonePeek; ///< by session
    OpenQuestions m_questions;
    QHash<QString, Instant> m_turns; ///< by session: since when it is seen to work
    struct Notice {
        QString text;
        Instant at;
    };
    QHash<QString, Notice> m_notices; ///< by session: the last Notification that was raised
    QHash<QString, Instant> m_saidDone; ///< by session, as long as a listing may not know of it yet
    TimerHandle m_lookAgain;
};

} // namespace velto
