#include "Core/PeekQueue.h"

#include "Platform/Accessibility.h"
#include "Platform/Clock.h"

#include <algorithm>

namespace velto {

PeekQueue::PeekQueue(Clock &clock, Accessibility &accessibility, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
    , m_accessibility(accessibility)
{
}

void PeekQueue::decide(Peek &peek, std::optional<bool> answer)
{
    if (const auto callback = std::exchange(peek.decide, {}))
        callback(answer);
}

int PeekQueue::rank(const Peek &peek)
{
    if (peek.isQuestion())
        return -1;
    switch (peek.tone) {
    case Peek::Tone::Bad:
        return 0;
    case Peek::Tone::Warn:
        return 1;
    case Peek::Tone::Good:
    case Peek::Tone::Info:
        break;
    }
    return 2;
}

void PeekQueue::show(Peek peek, bool quiet)
{
    const auto sameText = [&peek](const Peek &other) { return other.text == peek.text; };
    if (quiet || (m_onShow && sameText(*m_onShow)) || std::ranges::any_of(m_queue, sameText)) {
        decide(peek, std::nullopt);
        return;
    }
    // Equal ranks keep their order of arrival.
    const auto place = std::ranges::upper_bound(m_queue, rank(peek), {}, &PeekQueue::rank);
    m_queue.insert(place, std::move(peek));
    if (!m_onShow)
        next();
    if (waiting() > kMostWaiting) {
        Peek last = std::move(m_queue.back());
        m_queue.pop_back();
        decide(last, std::nullopt);
    }
}

void PeekQueue::next()
{
    m_end.reset();
    m_press.reset();
    if (m_queue.empty()) {
        m_onShow.reset();
        Q_EMIT onShowChanged();
        return;
    }
    m_onShow = std::move(m_queue.front());
    m_queue.pop_front();
    m_shownAt = m_clock.now();

    const auto stay = m_onShow->isQuestion() ? kQuestionStay : m_accessibility.screenReaderOn() ? kSpokenStay : kStay;
    m_end = m_clock.after(stay, [this] {
        Peek ended = std::move(*m_onShow);
        next();
        decide(ended, std::nullopt);
    });
    const QString text = m_onShow->text;
    Q_EMIT onShowChanged();
    m_accessibility.announce(text);
}

void PeekQueue::dismiss()
{
    m_end.reset();
    m_press.reset();
    std::optional<Peek> shown = std::exchange(m_onShow, std::nullopt);
    std::deque<Peek> dropped = std::exchange(m_queue, {});
    if (shown) {
        Q_EMIT onShowChanged();
        decide(*shown, std::nullopt);
    }
    for (Peek &peek : dropped)
        decide(peek, std::nullopt);
}

void PeekQueue::pressBegan(const QUuid &id)
{
    m_press = Press{id, m_clock.now()};
}

bool PeekQueue::takesPress(const QUuid &id) const
{
    if (!m_onShow || m_onShow->id != id)
        return false;
    if (!m_onShow->isQuestion())
        return true;
    if (m_press && m_press->peek != id)
        return false;
    return (m_press ? m_press->at : m_clock.now()) - m_shownAt >= kUnread;
}

void PeekQueue::answer(const QUuid &id, bool allowed)
{
    if (!takesPress(id) || !m_onShow->isQuestion())
        return;
    Peek answered = std::move(*m_onShow);
    next();
    decide(answered, allowed);
}

} // namespace velto
