#include "Feeds/Everyday/Desk.h"
#include "RunTests.h"

namespace velto {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// The countdown and its end.
class FocusTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void countsDownByTheSecond()
    {
        Desk desk;
        QCOMPARE(desk.source.focusRemaining(), QString());
        desk.source.startFocus();
        QCOMPARE(desk.source.focusRemaining(), u"25:00"_s);
        auto changes = desk.changes.size();
        desk.clock.advance(1ms);
        QCOMPARE(desk.source.focusRemaining(), u"24:59"_s);
        QCOMPARE(desk.changes.size(), changes + 1);
        desk.clock.advance(15min + 52s);
        QCOMPARE(desk.source.focusRemaining(), u"9:07"_s);
        QCOMPARE(desk.changes.size(), changes + 1 + 15 * 60 + 52);
        desk.source.stopFocus();
        QVERIFY(!desk.source.focusing());
        changes = desk.changes.size();
        desk.clock.advance(1h);
        QCOMPARE(desk.changes.size(), changes);
        QVERIFY(desk.peeks.isEmpty());
        QVERIFY(desk.sounds.played.isEmpty());
    }

    void endsOnTimeWithAPeekAndASound()
    {
        Desk desk;
        desk.prefs.set(Prefs::Module::Focus, false); // a running period ends all the same
        desk.clock.advance(7s);
        desk.source.startFocus();
        desk.clock.advance(25min - 1ms);
        QVERIFY(desk.peeks.isEmpty());
        desk.clock.advance(1ms);
        QCOMPARE(desk.peeks.size(), 1);
        const Peek peek = desk.peeks.front();
        QCOMPARE(peek.symbol, u"timer"_s);
        QCOMPARE(peek.text, u"Focus time is up · 25 min done"_s);
        QCOMPARE(peek.tone, Peek::Tone::Good);
        QCOMPARE(peek.tab, std::optional(Tab::Home));
        QVERIFY(!peek.url && !peek.resume && !peek.cwd && !peek.decide);
        QCOMPARE(desk.sounds.played, QStringList{u"Glass"_s});
        QVERIFY(!desk.source.focusing());
        desk.clock.advance(1h);
        QCOMPARE(desk.peeks.size(), 1);
    }

    void clockThatJumps()
    {
        // The machine slept past the end, slept briefly, the clock was set back; then what remains a second later, or nothing
        // if it ended.
        for (const auto &[hours, remaining] :
             {std::pair(8.0, QString()), std::pair(1.0 / 6, u"14:57"_s), std::pair(-1.0, u"84:57"_s)}) {
            Desk desk;
            desk.source.startFocus();
            desk.clock.advance(1500ms);
            desk.clock.setWallTime(desk.clock.wallTime().addSecs(qRound64(hours * 3600)));
            desk.clock.advance(1s);
            QCOMPARE(desk.source.focusRemaining(), remaining);
            QCOMPARE(desk.peeks.size(), remaining.isEmpty() ? 1 : 0);
        }
    }

    void peekThatStartsTheNextPeriod()
    {
        Desk desk;
        connect(&desk.source, &EverydaySource::peekWanted, &desk.source, &EverydaySource::startFocus);
        desk.source.startFocus();
        desk.clock.advance(50min);
        QCOMPARE(desk.peeks.size(), 2);
        QCOMPARE(desk.source.focusRemaining(), u"25:00"_s);
    }
};

const Registered<FocusTest> registered;

} // namespace velto

#include "FocusTest.moc"
