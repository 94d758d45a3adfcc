#include "Core/PeekQueue.h"

#include "Platform/Accessibility.h"
#include "Platform/Clock.h"

namespace velto {

PeekQueue::PeekQueue(Clock &clock, Accessibility &accessibility, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
    , m_accessibility(accessibility)
{
}

void PeekQueue::settle()
{
    const auto now = m_clock.now();
    m_timeline.update(now, m_accessibility.screenReaderOn() ? PeekTimeline::kSpokenStay : PeekTimeline::kStay);
    m_wake.reset();
    if (const auto next = m_timeline.nextDeadline()) {
        const auto left = std::chrono::ceil<Clock::Duration>(*next - now);
        m_wake = m_clock.after(std::max(left, Clock::Duration(0)), [this] { settle(); });
    }
    // A slot may show, dismiss or answer a Peek in turn.
    const auto ended = m_timeline.takeEnded();
    const auto shown = onShow() ? onShow()->id : QUuid();
    if (shown != m_announced) {
        m_announced = shown; // a press that goes on began on another, and isn't meant for this one
        const QString text = onShow() ? onShow()->text : QString();
        Q_EMIT onShowChanged();
        if (!shown.isNull())
            m_accessibility.announce(text);
    }
    for (const auto &[question, answer] : ended)
        question.decide(answer);
}

void PeekQueue::show(Peek peek, bool quiet)
{
    if (quiet)
        m_timeline.refuse(std::move(peek));
    else
        m_timeline.offer(std::move(peek), m_clock.now());
    settle();
}

void PeekQueue::dismiss()
{
    m_timeline.clear();
    settle();
}

void PeekQueue::withdraw(const QUuid &question)
{
    m_timeline.withdraw(question);
    settle();
}

void PeekQueue::retract(Peek::News news, const QSet<QString> &sessions)
{
    m_timeline.retract(news, sessions);
    settle();
}

void PeekQueue::pressBegan(const QUuid &id)
{
    m_press = Press{id, m_clock.now()};
}

void PeekQueue::moved()
{
    if (m_press)
        m_press->peek = {};
    m_movedAt = m_clock.now();
}

bool PeekQueue::takesPress(const QUuid &id) const
{
    if (!onShow() || onShow()->id != id)
        return false;
    if (!onShow()->isQuestion())
        return true;
    if (m_press && m_press->peek != id)
        return false;
    const Instant pressedAt = m_press ? m_press->at : m_clock.now();
    return pressedAt - std::max(m_timeline.shownAt(), m_movedAt) >= kUnread
        && (!m_answeredAt || pressedAt - *m_answeredAt >= kDoubleClick);
}

void PeekQueue::answer(const QUuid &id, bool allowed)
{
    if (!takesPress(id) || !onShow()->isQuestion())
        return;
    m_answeredAt = m_press ? m_press->at : m_clock.now();
    m_timeline.finish(allowed);
    settle();
    if (!onShow()) // the next one is announced instead
        m_accessibility.announce(allowed ? tr("Allowed") : tr("Denied"));
}

} // namespace velto
