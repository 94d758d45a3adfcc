#pragma once

#include "Core/Peek.h"
#include "Platform/Timer.h"

#include <QObject>
#include <chrono>
#include <deque>

namespace velto {

class Accessibility;
class Clock;

/// The one queue that everything with something to say goes through: what is dropped, what comes first, how long each line
/// stays, and what becomes of a question that nobody answers. UI thread only.
class PeekQueue : public QObject {
    Q_OBJECT
public:
    static constexpr std::chrono::seconds kStay{4};
    static constexpr std::chrono::seconds kSpokenStay{10};
    static constexpr std::chrono::seconds kQuestionStay{28};
    /// Nobody can have read a question that slid in this recently: a press on it was meant for something else.
    static constexpr std::chrono::milliseconds kUnread{300};
    /// As many play for a quarter of an hour: what comes then would be old news by its turn.
    static constexpr int kMostWaiting = 200;

    PeekQueue(Clock &clock, Accessibility &accessibility, QObject *parent = nullptr);

    const std::optional<Peek> &onShow() const { return m_onShow; }
    int waiting() const { return int(m_queue.size()); }

    /// Offers a Peek. While `quiet`, or while the same text is on show or waiting, it is dropped, and a question is answered
    /// with nothing at once. So is what comes last of all while kMostWaiting wait.
    void show(Peek peek, bool quiet);
    /// Ends the Peek on show and drops everything that waits; their questions get no answer.
    void dismiss();
    /// The user pressed a button over the row of this Peek; an answer or a dismissal may follow when it is released.
    void pressBegan(const QUuid &id);
    /// Whether a press on this Peek counts: it is the one on show, and was there long enough to be read when the press began.
    bool takesPress(const QUuid &id) const;
    /// Answers the question on show and goes on to the next Peek. Does nothing if that press doesn't count.
    void answer(const QUuid &id, bool allowed);

Q_SIGNALS:
    void onShowChanged();

private:
    struct Press {
        QUuid peek;
        Instant at;
    };

    void next();
    static int rank(const Peek &peek);
    static void decide(Peek &peek, std::optional<bool> answer);

    Clock &m_clock;
    Accessibility &m_accessibility;
    std::optional<Peek> m_onShow;
    Instant m_shownAt;
    std::optional<Press> m_press;
    std::deque<Peek> m_queue;
    TimerHandle m_end;
};

} // namespace velto
