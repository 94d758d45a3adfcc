#pragma once

#include "Core/PeekTimeline.h"
#include "Platform/Timer.h"

#include <QObject>
#include <chrono>

namespace velto {

class Accessibility;
class Clock;

/// The one queue for everything that has something to say. PeekTimeline says what holds at a given time; this gives it the
/// time with one timer, tells those who watch, and answers the questions that have ended. UI thread only.
class PeekQueue : public QObject {
    Q_OBJECT
public:
    /// Nobody can have read a question that slid in this recently: a press on it was meant for something else.
    static constexpr std::chrono::milliseconds kUnread{300};
    /// A press this soon after the one that gave an answer is the second half of a double click.
    static constexpr std::chrono::milliseconds kDoubleClick{500};

    PeekQueue(Clock &clock, Accessibility &accessibility, QObject *parent = nullptr);

    const std::optional<Peek> &onShow() const { return m_timeline.onShow(); }
    int waiting() const { return m_timeline.waiting(); }

    /// Offers a Peek. While `quiet`, or while the same text is on show or waiting, it is dropped, and a question is answered
    /// with nothing at once.
    void show(Peek peek, bool quiet);
    /// Ends the Peek on show and drops everything that waits; their questions get no answer.
    void dismiss();
    /// See PeekTimeline.
    void withdraw(const QUuid &question);
    void retract(Peek::News news, const QSet<QString> &sessions);
    /// The user pressed a button over the row of this Peek; an answer or a dismissal may follow when it is released.
    void pressBegan(const QUuid &id);
    /// The Peek on show has moved. A press in its old place, or just afterwards, wasn't meant for it.
    void moved();
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

    void settle();

    Clock &m_clock;
    Accessibility &m_accessibility;
    PeekTimeline m_timeline;
    QUuid m_announced; ///< the one on show that everyone has been told of; null for none
    std::optional<Press> m_press;
    std::optional<Instant> m_answeredAt; ///< when the press began that gave the last answer
    Instant m_movedAt;
    TimerHandle m_wake;
};

} // namespace velto
