#include "Core/PeekTimeline.h"

#include <QCoreApplication>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

int PeekTimeline::rank(const Peek &peek)
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

void PeekTimeline::end(Peek peek, std::optional<bool> answer)
{
    if (peek.isQuestion())
        m_ended.push_back({std::move(peek), answer});
}

void PeekTimeline::insert(Entry entry)
{
    // Equal ranks keep their order of arrival.
    const auto place = std::ranges::upper_bound(m_queue, rank(entry.peek), {}, [](const Entry &e) { return rank(e.peek); });
    m_queue.insert(place, std::move(entry));
}

void PeekTimeline::offer(Peek peek, Instant now)
{
    const auto sameText = [&peek](const Peek &other) { return other.text == peek.text; };
    const auto tellsIt = [&sameText](const Entry &entry) {
        return sameText(entry.peek) || std::ranges::any_of(entry.parts, sameText);
    };
    if ((m_onShow && sameText(*m_onShow)) || std::ranges::any_of(m_queue, tellsIt))
        return refuse(std::move(peek));
    const auto latest = peek.isQuestion() && peek.patience ? std::optional(now + *peek.patience - kLeast) : std::nullopt;
    const auto news = peek.isQuestion() ? Peek::News::Other : peek.news;
    insert({.peek = std::move(peek), .latest = latest, .parts = {}, .told = {}});
    if (news != Peek::News::Other)
        gather(news);
    // If nothing is on show, the first in the queue is about to be.
    if (waiting() > kMostWaiting + (m_onShow ? 0 : 1)) {
        Entry last = std::move(m_queue.back());
        m_queue.pop_back();
        end(std::move(last.peek), std::nullopt);
    }
}

/// Gathers everything that waits with this news into one line, if there is too much of it or such a line waits already. The one
/// on show counts as the first of the burst.
void PeekTimeline::gather(Peek::News news)
{
    const auto isSuch = [news](const Entry &entry) { return !entry.peek.isQuestion() && entry.peek.news == news; };
    const auto count = std::ranges::count_if(m_queue, isSuch);
    const bool begun = std::ranges::any_of(m_queue, [&](const Entry &e) { return isSuch(e) && !e.parts.empty(); });
    if (count < 2 || (count <= kMostOfOneNews && !begun))
        return;
    Entry all;
    if (!begun && m_onShow && m_onShow->news == news && !m_onShowIsGathered && !m_onShow->isQuestion()) {
        all.parts.push_back(*m_onShow);
        all.told = m_onShow->id;
    }
    for (Entry &entry : m_queue) {
        if (!isSuch(entry))
            continue;
        if (entry.parts.empty())
            entry.parts.push_back(std::move(entry.peek));
        else
            all.told = entry.told;
        if (all.parts.empty()) {
            all.parts = std::move(entry.parts); // their sessions differ already
            continue;
        }
        for (Peek &part : entry.parts) {
            if (std::ranges::find(all.parts, part.session, &Peek::session) == all.parts.end())
                all.parts.push_back(std::move(part));
        }
    }
    std::erase_if(m_queue, isSuch);
    tell(all);
    insert(std::move(all));
}

/// Words a gathered line from its parts.
void PeekTimeline::tell(Entry &entry)
{
    const auto &first = entry.parts.front();
    Peek line;
    line.symbol = first.symbol;
    line.tone = first.tone;
    line.news = first.news;
    line.tab = Tab::Agents;
    line.text = (first.news == Peek::News::Finished ? QCoreApplication::translate("PeekQueue", "%1 agents finished")
                                                    : QCoreApplication::translate("PeekQueue", "%1 agents need you"))
                    .arg(entry.parts.size());
    entry.peek = std::move(line);
}

/// Questions whose turn would come too late go back to their terminal, and a line says so.
void PeekTimeline::lapse(Instant now)
{
    const auto isLate = [now](const Entry &entry) { return entry.latest && *entry.latest <= now; };
    std::vector<Peek> late;
    for (Entry &entry : m_queue) {
        if (isLate(entry))
            late.push_back(std::move(entry.peek));
    }
    if (late.empty())
        return;
    std::erase_if(m_queue, isLate);
    for (Peek &question : late) {
        Peek line = question;
        line.decide = {};
        line.id = QUuid::createUuid();
        line.text = std::exchange(line.lapsed, {});
        line.news = Peek::News::NeedsYou;
        end(std::move(question), std::nullopt);
        if (!line.text.isEmpty())
            offer(std::move(line), now);
    }
}

void PeekTimeline::update(Instant now, std::chrono::seconds stay)
{
    if (m_onShow && m_ends <= now)
        finish(std::nullopt);
    lapse(now);
    if (m_onShow || m_queue.empty())
        return;
    m_onShow = std::move(m_queue.front().peek);
    m_onShowIsGathered = !m_queue.front().parts.empty();
    m_queue.pop_front();
    m_shownAt = now;
    m_ends = now + (m_onShow->isQuestion() ? kQuestionStay : stay);
}

std::optional<Instant> PeekTimeline::nextDeadline() const
{
    std::optional<Instant> next = m_onShow ? std::optional(m_ends) : std::nullopt;
    for (const Entry &entry : m_queue) {
        if (entry.latest && (!next || *entry.latest < *next))
            next = entry.latest;
    }
    return next;
}

void PeekTimeline::finish(std::optional<bool> answer)
{
    if (auto shown = std::exchange(m_onShow, std::nullopt))
        end(std::move(*shown), answer);
}

void PeekTimeline::withdraw(const QUuid &question)
{
    if (m_onShow && m_onShow->id == question)
        return finish(std::nullopt);
    const auto found = std::ranges::find(m_queue, question, [](const Entry &entry) { return entry.peek.id; });
    if (found == m_queue.end())
        return;
    Peek gone = std::move(found->peek);
    m_queue.erase(found);
    end(std::move(gone), std::nullopt);
}

void PeekTimeline::retract(Peek::News news, const QSet<QString> &sessions)
{
    const auto isAbout = [&](const Peek &peek) {
        return !peek.isQuestion() && peek.news == news && sessions.contains(peek.session);
    };
    for (auto entry = m_queue.begin(); entry != m_queue.end();)
        entry = (entry->parts.empty() ? isAbout(entry->peek) : forget(*entry, isAbout)) ? m_queue.erase(entry) : entry + 1;
}

/// Takes such lines out of a gathered one. True if only lines that were shown already are left.
bool PeekTimeline::forget(Entry &entry, const std::function<bool(const Peek &)> &isSuch)
{
    if (std::erase_if(entry.parts, isSuch) == 0)
        return false;
    if (entry.parts.size() > 1) {
        tell(entry);
        return false;
    }
    if (!entry.parts.empty())
        entry.peek = std::exchange(entry.parts, {}).front();
    return entry.parts.empty() && entry.told == entry.peek.id;
}

void PeekTimeline::clear()
{
    finish(std::nullopt);
    for (Entry &entry : std::exchange(m_queue, {}))
        end(std::move(entry.peek), std::nullopt);
}

} // namespace velto
