#include "Core/PeekQueue.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/FakePlatform.h"
#include "RunTests.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velto {

/// What the user sees slide out, in which order and for how long, and what becomes of questions.
class PeekQueueTest : public QObject {
    Q_OBJECT

    struct World {
        FakeClock clock;
        FakeAccessibility accessibility;
        PeekQueue queue{clock, accessibility};
        QStringList answers; ///< "text:allow", "text:deny", "text:nothing", in order

        void show(const QString &text, Peek::Tone tone = Peek::Tone::Info, bool quiet = false)
        {
            Peek peek;
            peek.text = text;
            peek.tone = tone;
            queue.show(std::move(peek), quiet);
        }
        /// A question, whose asker waits for so long if that is given.
        QUuid ask(const QString &text, bool quiet = false, std::optional<std::chrono::seconds> patience = {})
        {
            Peek peek;
            peek.text = text;
            if (patience) {
                peek.patience = *patience;
                peek.lapsed = text + " lapsed"_L1;
            }
            peek.decide = [this, text](std::optional<bool> answer) {
                answers.append(text + QLatin1String(!answer ? ":nothing" : *answer ? ":allow" : ":deny"));
            };
            const QUuid id = peek.id;
            queue.show(std::move(peek), quiet);
            return id;
        }
        QUuid askFor(const QString &text, std::chrono::seconds patience) { return ask(text, false, patience); }
        /// "SESSION finished" or "SESSION needs you".
        void tell(Peek::News news, const QString &session)
        {
            Peek peek;
            peek.text = session + (news == Peek::News::Finished ? " finished"_L1 : " needs you"_L1);
            peek.tone = news == Peek::News::Finished ? Peek::Tone::Good : Peek::Tone::Warn;
            peek.news = news;
            peek.session = session;
            queue.show(std::move(peek), false);
        }
        /// What plays from now on, one line after the other.
        QStringList played()
        {
            QStringList all;
            while (queue.onShow()) {
                all += shown();
                wait(queue.onShow()->isQuestion() ? 28000 : 4000);
            }
            return all;
        }
        QString shown() const { return queue.onShow() ? queue.onShow()->text : QString(); }
        QUuid id() const { return queue.onShow()->id; }
        void wait(int milliseconds) { clock.advance(std::chrono::milliseconds(milliseconds)); }
    };

private Q_SLOTS:
    void playsByRankAndThenByArrival()
    {
        World w;
        w.show(u"first"_s);
        w.show(u"A"_s, Peek::Tone::Info);
        w.show(u"B"_s, Peek::Tone::Bad);
        w.show(u"C"_s, Peek::Tone::Warn);
        w.show(u"D"_s, Peek::Tone::Bad);
        w.ask(u"question"_s);
        QCOMPARE(w.played(), (QStringList{u"first"_s, u"question"_s, u"B"_s, u"D"_s, u"C"_s, u"A"_s}));
        QCOMPARE(w.shown(), QString());
        QCOMPARE(w.clock.pendingTimers(), 0);
    }

    void dropsTheSameTextWhileItIsOnShowOrWaiting()
    {
        World w;
        w.show(u"one"_s);
        w.ask(u"one"_s);
        w.ask(u"two"_s);
        w.ask(u"two"_s);
        QCOMPARE(w.answers, (QStringList{u"one:nothing"_s, u"two:nothing"_s}));
        QCOMPARE(w.queue.waiting(), 1);
        w.wait(4000 + 28000);
        w.show(u"one"_s);
        QCOMPARE(w.shown(), u"one"_s);
    }

    void staysLongerForQuestionsAndListeners()
    {
        World w;
        w.show(u"plain"_s);
        w.wait(3999);
        QCOMPARE(w.shown(), u"plain"_s);
        w.wait(1);
        QCOMPARE(w.shown(), QString());

        w.accessibility.screenReader = true;
        w.show(u"spoken"_s);
        w.wait(9999);
        QCOMPARE(w.shown(), u"spoken"_s);
        w.wait(1);
        w.ask(u"question"_s);
        w.wait(27999);
        QCOMPARE(w.shown(), u"question"_s);
        QVERIFY(w.answers.isEmpty());
        w.wait(1);
        QCOMPARE(w.answers, QStringList{u"question:nothing"_s});
        QCOMPARE(w.accessibility.announced, (QStringList{u"plain"_s, u"spoken"_s, u"question"_s}));
    }

    void anAnswerGoesToItsQuestionOnceAndTheQueueGoesOn()
    {
        World w;
        w.ask(u"first"_s);
        w.ask(u"second"_s);
        w.wait(1000);
        const QUuid first = w.id();
        w.queue.answer(first, true);
        QCOMPARE(w.shown(), u"second"_s);
        w.queue.answer(first, false); // a press on a row that is already gone
        w.wait(27500); // past the end of the first question's time
        QCOMPARE(w.answers, QStringList{u"first:allow"_s});
        w.queue.answer(w.id(), false);
        QCOMPARE(w.answers, (QStringList{u"first:allow"_s, u"second:deny"_s}));
        QCOMPARE(w.accessibility.announced, (QStringList{u"first"_s, u"second"_s, u"Denied"_s}));
        w.wait(60000);
        QCOMPARE(w.answers.size(), 2);
    }

    void aQuestionIsShownOnlyWhileItsAskerWaits()
    {
        World w;
        w.askFor(u"a"_s, 35s); // 0 to 28
        w.wait(1000);
        w.askFor(u"b"_s, 35s); // 28 to 56, if it had the time
        w.askFor(u"c"_s, 35s);
        w.wait(27000);
        QCOMPARE(w.shown(), u"b"_s);
        w.wait(4999);
        QCOMPARE(w.answers, QStringList{u"a:nothing"_s});
        w.wait(1); // 32 seconds after it came: too late for c, whatever is on show
        QCOMPARE(w.answers, (QStringList{u"a:nothing"_s, u"c:nothing"_s}));
        QCOMPARE(w.shown(), u"b"_s);
        w.wait(23000);
        QCOMPARE(w.played(), QStringList{u"c lapsed"_s});
        QCOMPARE(w.answers.size(), 3); // the line is no question
        QCOMPARE(w.clock.pendingTimers(), 0);
    }

    void aQuestionLeavesWithItsAsker()
    {
        World w;
        const QUuid first = w.askFor(u"first"_s, 35s);
        const QUuid second = w.askFor(u"second"_s, 35s);
        w.askFor(u"third"_s, 35s);
        w.queue.withdraw(second);
        QCOMPARE(w.shown(), u"first"_s);
        w.queue.withdraw(first);
        QCOMPARE(w.shown(), u"third"_s);
        QCOMPARE(w.accessibility.announced, (QStringList{u"first"_s, u"third"_s}));
        w.queue.withdraw(first);
        w.wait(299);
        w.queue.answer(w.id(), true); // it slid in under a pointer that was just pressing
        QCOMPARE(w.answers, (QStringList{u"second:nothing"_s, u"first:nothing"_s}));
        w.wait(1);
        w.queue.answer(w.id(), true);
        QCOMPARE(w.answers.last(), u"third:allow"_s);
    }

    void linesThatAreNoLongerTrueAreTakenBack()
    {
        World w;
        for (const auto &session : {u"a"_s, u"b"_s, u"c"_s})
            w.tell(Peek::News::Finished, session);
        w.tell(Peek::News::NeedsYou, u"b"_s);
        w.queue.retract(Peek::News::Finished, {u"a"_s, u"b"_s}); // a is on show already, and stays
        QCOMPARE(w.played(), (QStringList{u"a finished"_s, u"b needs you"_s, u"c finished"_s}));
    }

    void aBurstOfOneKindIsOneLine()
    {
        World w;
        w.show(u"first"_s);
        for (int i = 0; i < 5; ++i)
            w.tell(Peek::News::Finished, QString::number(i));
        QCOMPARE(w.queue.waiting(), 5);
        w.tell(Peek::News::NeedsYou, u"other"_s);
        w.tell(Peek::News::Finished, u"5"_s);
        w.tell(Peek::News::Finished, u"6"_s);
        w.tell(Peek::News::Finished, u"6"_s);
        w.queue.retract(Peek::News::Finished, {u"3"_s});
        QCOMPARE(w.queue.waiting(), 2);
        QCOMPARE(w.played(), (QStringList{u"first"_s, u"other needs you"_s, u"6 agents finished"_s}));

        // The first one is on show alone, and counts too.
        for (int i = 0; i < 7; ++i)
            w.tell(Peek::News::Finished, QString::number(i));
        QCOMPARE(w.played(), (QStringList{u"0 finished"_s, u"7 agents finished"_s}));
        for (int i = 0; i < 7; ++i)
            w.tell(Peek::News::Finished, QString::number(i));
        w.queue.retract(Peek::News::Finished, {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s});
        w.queue.retract(Peek::News::Finished, {u"6"_s});
        QCOMPARE(w.played(), QStringList{u"0 finished"_s});
        w.show(u"first"_s);
        for (int i = 0; i < 6; ++i)
            w.tell(Peek::News::Finished, QString::number(i));
        w.queue.retract(Peek::News::Finished, {u"0"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s});
        QCOMPARE(w.played(), (QStringList{u"first"_s, u"5 finished"_s})); // which nobody has been told
    }

    void linesThatNobodyWillEverSeeArentKept()
    {
        World w;
        for (int i = 0; i < 1000; ++i)
            w.show(QString::number(i));
        w.ask(u"question"_s);
        QCOMPARE(w.queue.waiting(), PeekTimeline::kMostWaiting);
        w.wait(4000);
        QCOMPARE(w.shown(), u"question"_s);
        w.wait(28000);
        QCOMPARE(w.shown(), u"1"_s);
    }

    void aPressTooEarlyToHaveBeenReadIsNoAnswer()
    {
        World w;
        w.ask(u"question"_s);
        w.wait(299);
        w.queue.pressBegan(w.id());
        w.wait(200);
        w.queue.answer(w.id(), true); // released later, but pressed too early
        QVERIFY(w.answers.isEmpty());
        w.queue.pressBegan(w.id());
        w.queue.answer(w.id(), true);
        QCOMPARE(w.answers, QStringList{u"question:allow"_s});

        // A press that began on one question doesn't answer the next.
        w.ask(u"other"_s);
        w.ask(u"third"_s);
        w.wait(400);
        const QUuid other = w.id();
        w.queue.pressBegan(other);
        w.queue.answer(other, true); // the second half of a double click
        QCOMPARE(w.answers.size(), 1);
        w.wait(600);
        w.queue.pressBegan(other);
        w.wait(28000);
        QCOMPARE(w.shown(), u"third"_s);
        w.queue.answer(other, true);
        QVERIFY(!w.queue.takesPress(other));
        w.wait(1000);
        w.queue.answer(w.id(), true); // held all the while, and released over the one that took its place
        QCOMPARE(w.answers.last(), u"other:nothing"_s);
    }

    void dismissingAndQuietEndAllWithoutAnAnswer()
    {
        World w;
        w.ask(u"one"_s);
        w.ask(u"two"_s);
        w.show(u"three"_s);
        w.queue.dismiss();
        w.ask(u"quiet"_s, true);
        w.show(u"line"_s, Peek::Tone::Bad, true);
        QCOMPARE(w.answers, (QStringList{u"one:nothing"_s, u"two:nothing"_s, u"quiet:nothing"_s}));
        QCOMPARE(w.shown(), QString());
        QCOMPARE(w.clock.pendingTimers(), 0);
    }

    void anAnswerMayRaiseAnotherPeek()
    {
        World w;
        Peek peek;
        peek.text = u"question"_s;
        peek.decide = [&w](std::optional<bool>) { w.show(u"from the answer"_s); };
        w.queue.show(std::move(peek), false);
        w.wait(500);
        w.queue.answer(w.id(), true);
        QCOMPARE(w.shown(), u"from the answer"_s);
    }
};

const Registered<PeekQueueTest> registered;

} // namespace velto

#include "PeekQueueTest.moc"
