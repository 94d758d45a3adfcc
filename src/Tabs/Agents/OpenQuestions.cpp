#include "Tabs/Agents/OpenQuestions.h"

#include <algorithm>

namespace velto {

namespace {

/// In milliseconds. The note may be a little older than the call, since `curl` takes a moment to start. An even older one is
/// about an earlier question.
constexpr qint64 kNotedBefore = 500;

} // namespace

void OpenQuestions::close(const QUuid &peek, bool answered, Instant now)
{
    m_open.removeIf([&](const Question &question) {
        if (question.peek != peek)
            return false;
        if (answered)
            announced(question.session, now);
        return true;
    });
}

void OpenQuestions::announced(const QString &session, Instant now)
{
    m_answered.removeIf([now](const auto &entry) { return now - entry.value() > kAftermath; });
    if (!session.isEmpty())
        m_answered.insert(session, now);
}

QList<QUuid> OpenQuestions::of(const QString &session) const
{
    QList<QUuid> peeks;
    for (const Question &question : m_open) {
        if (!session.isEmpty() && question.session == session)
            peeks.append(question.peek);
    }
    return peeks;
}

std::optional<QUuid> OpenQuestions::askedBy(HookListener::QuestionId asker) const
{
    const auto found = std::ranges::find(m_open, asker, &Question::asker);
    return found == m_open.end() ? std::nullopt : std::optional(found->peek);
}

QList<QUuid> OpenQuestions::overBy(const QList<Agent> &listing, Instant begun)
{
    QList<QUuid> over;
    for (Question &question : m_open) {
        // A listing that was begun before the question came may still show the state before it.
        if (question.session.isEmpty() || begun <= question.came)
            continue;
        const auto agent =
            std::ranges::find(listing, question.session, [](const Agent &a) { return a.sessionId.value_or(QString()); });
        const bool waits = agent != listing.end() && agent->isBlocked();
        if (question.seenWaiting && !waits)
            over.append(question.peek);
        question.seenWaiting = question.seenWaiting || waits;
    }
    return over;
}

QList<QUuid> OpenQuestions::overBy(const QList<SessionStatus> &notes)
{
    QList<QUuid> over;
    for (Question &question : m_open) {
        const auto note = std::ranges::find(notes, question.session, &SessionStatus::session);
        const bool waits = note != notes.end() && note->waits;
        if (question.notedWaiting && !waits)
            over.append(question.peek);
        question.notedWaiting = question.notedWaiting || (waits && note->since >= question.cameAt - kNotedBefore);
    }
    return over;
}

bool OpenQuestions::speaksFor(const QString &session, Instant now) const
{
    const auto answered = m_answered.constFind(session);
    return !of(session).isEmpty() || (answered != m_answered.cend() && now - *answered <= kAftermath);
}

} // namespace velto
