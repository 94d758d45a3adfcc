#pragma once

#include "Core/Peek.h"
#include "Platform/Timer.h"

#include <QSet>
#include <deque>
#include <functional>
#include <vector>

namespace velto {

/// What is on show, what waits, and what becomes of it, as a function of time: it has no timer, calls nobody, and changes only in
/// its functions. Whoever owns it calls update() after each change and at nextDeadline(), and takes what has ended.
class PeekTimeline {
public:
    static constexpr std::chrono::seconds kStay{4};
    static constexpr std::chrono::seconds kSpokenStay{10};
    static constexpr std::chrono::seconds kQuestionStay{28};
    /// An asker that waits no longer than this isn't worth a question: nobody reads and answers one faster.
    static constexpr std::chrono::seconds kLeast{3};
    /// This many play for a quarter of an hour: what comes after them would be old news by its turn.
    static constexpr int kMostWaiting = 200;
    /// If more lines than this with the same news wait, one line replaces them all.
    static constexpr int kMostOfOneNews = 5;

    /// A question that is over, and its answer.
    struct Ended {
        Peek question;
        std::optional<bool> answer;
    };

    const std::optional<Peek> &onShow() const { return m_onShow; }
    Instant shownAt() const { return m_shownAt; }
    int waiting() const { return int(m_queue.size()); }

    /// Queues a Peek behind those of its rank; drops it if the same text is on show or waits. So is what comes last of all while
    /// kMostWaiting wait.
    void offer(Peek peek, Instant now);
    /// Ends what is over by now, and shows what is next. `stay` is how long a line that comes on show remains.
    void update(Instant now, std::chrono::seconds stay);
    /// When update() will have something to do; nothing at rest.
    std::optional<Instant> nextDeadline() const;

    /// Ends the Peek on show, as an answer if it is a question.
    void finish(std::optional<bool> answer);
    /// The asker of this question is gone, or has its answer from elsewhere.
    void withdraw(const QUuid &question);
    /// Takes back waiting lines with this news: it is no longer true of these sessions.
    void retract(Peek::News news, const QSet<QString> &sessions);
    /// Drops everything.
    void clear();
    /// A Peek that isn't to be shown at all.
    void refuse(Peek peek) { end(std::move(peek), std::nullopt); }

    std::vector<Ended> takeEnded() { return std::exchange(m_ended, {}); }

private:
    struct Entry {
        Peek peek;
        std::optional<Instant> latest; ///< when a question's turn must have come
        std::vector<Peek> parts; ///< the lines that this one replaces
        std::optional<QUuid> told; ///< the one of them that was on show already
    };

    static int rank(const Peek &peek);
    void insert(Entry entry);
    void end(Peek peek, std::optional<bool> answer);
    void lapse(Instant now);
    void gather(Peek::News news);
    static void tell(Entry &entry);
    static bool forget(Entry &entry, const std::function<bool(const Peek &)> &isSuch);

    std::optional<Peek> m_onShow;
    bool m_onShowIsGathered = false;
    Instant m_shownAt;
    Instant m_ends; ///< of the one on show
    std::deque<Entry> m_queue;
    std::vector<Ended> m_ended;
};

} // namespace velto
