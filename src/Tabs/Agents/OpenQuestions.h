#pragma once

#include "Hooks/HookListener.h"
#include "Platform/Timer.h"
#include "Tabs/Agents/Agent.h"
#include "Tabs/Agents/SessionNotes.h"

#include <QHash>
#include <QUuid>

namespace velto {

/// The permission questions that wait here for an answer, what shows that one is over, and which sessions had theirs answered
/// just now. A plain record of facts: it ends nothing itself.
class OpenQuestions {
public:
    struct Question {
        HookListener::QuestionId asker = 0;
        QUuid peek;
        QString session; ///< empty if its asker didn't say
        Instant came;
        qint64 cameAt = 0; ///< the same by the wall clock, in milliseconds since 1970-01-01 UTC
        bool seenWaiting = false; ///< a listing that was begun later shows its session waiting for it
        bool notedWaiting = false; ///< Claude Code's note of the session says so
    };
    /// For this long after an answer, anything else that announces the same question is late.
    static constexpr std::chrono::seconds kAftermath{15};

    bool isEmpty() const { return m_open.isEmpty(); }
    void add(Question question) { m_open.append(std::move(question)); }
    /// It is over; `answered`: by the user's answer.
    void close(const QUuid &peek, bool answered, Instant now);
    /// The user has just been told of a question of the session, in another way.
    void announced(const QString &session, Instant now);

    QList<QUuid> of(const QString &session) const;
    std::optional<QUuid> askedBy(HookListener::QuestionId asker) const;
    /// Those whose session waited in a listing since they came, and no longer does in this one.
    QList<QUuid> overBy(const QList<Agent> &listing, Instant begun);
    /// Those whose session was noted to wait for them, and no longer is, or has no note any more.
    QList<QUuid> overBy(const QList<SessionStatus> &notes);
    /// The session has a question here, or had its answer just now.
    bool speaksFor(const QString &session, Instant now) const;

private:
    QList<Question> m_open;
    QHash<QString, Instant> m_answered; ///< by session
};

} // namespace velto
