#include "Feeds/Everyday/Desk.h"
#include "RunTests.h"

namespace velto {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// The next event, how its text changes over time, and the one warning before it.
class CalendarTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void saysWhenItIs()
    {
        const auto row = [](const char *name, std::chrono::milliseconds ahead, const char *text) {
            Desk desk;
            desk.type(QString::fromUtf8(name), desk.in(ahead));
            QCOMPARE(desk.source.nextEventText(), QString::fromUtf8(name) + u' ' + QString::fromUtf8(text));
        };
        row("an hour", 60min, "at 10:00");
        row("less than an hour", 60min - 1ms, "in 60 min");
        row("a part of a minute counts", 14min + 30s, "in 15 min");
        row("whole minutes", 5min, "in 6 min");
        row("seconds", 1ms, "in 1 min");
        row("starts", 0ms, "now · until 10:00");
        row("runs", -59min, "now · until 09:01");
        row("tomorrow", 20h, "at 05:00");
    }

    void typedMeetingLastsAnHour()
    {
        Desk desk;
        QCOMPARE(desk.source.calendarState(), SourceState::loading());
        desk.type(u" Standup\n"_s, desk.in(90min), u" https://meet.example.com/a "_s);
        const auto event = desk.source.nextEvent().value();
        QCOMPARE(event.title, u"Standup"_s);
        QCOMPARE(event.id, u"manual-%1.0"_s.arg(desk.in(90min).toSecsSinceEpoch()));
        QCOMPARE(event.detail(), u"Added in Velto"_s);
        QCOMPARE(event.joinURL, std::optional(QUrl(u"https://meet.example.com/a"_s)));
        QCOMPARE(desk.source.leftToday(), 1);
        QCOMPARE(desk.source.calendarState(), SourceState::ready());
        // Another title is the same meeting, another start a different one.
        desk.type(u"Daily"_s, event.start);
        QCOMPARE(desk.source.nextEvent()->id, event.id);
        desk.type(u"Daily"_s, event.start.addMSecs(500));
        QVERIFY(desk.source.nextEvent()->id.endsWith(u".5"_s));

        desk.type(u"Daily"_s, event.start);
        desk.clock.advance(149min + 59s);
        QVERIFY(desk.source.hasNextEvent());
        desk.clock.advance(15s);
        QVERIFY(!desk.source.hasNextEvent());
        QCOMPARE(desk.source.leftToday(), 0);
        QCOMPARE(desk.source.calendarState().reason(), u"No meeting added."_s);
        QCOMPARE(desk.source.calendarState().fix(), u"Add one yourself in the Connect tab."_s);
    }

    void linksThatABrowserOpens()
    {
        const auto opened = [](const QString &link) {
            Desk desk;
            desk.type(u"Standup"_s, desk.in(1h), link);
            const auto url = desk.source.nextEvent()->joinURL;
            return url ? url->toString(QUrl::FullyEncoded) : u"none"_s;
        };
        QCOMPARE(opened(u"http://zoom.example/j/1?pwd=a%20b"_s), u"http://zoom.example/j/1?pwd=a%20b"_s);
        QCOMPARE(opened(u"meet.example.com/abc"_s), u"https://meet.example.com/abc"_s);
        for (const auto *none : {"", "  ", "room 4", "kitchen", "javascript:alert(1)", "javascript://x.example/%0aalert(1)",
                                 "file:///etc/passwd", "-x", "https://", "https://a.example/ rm -rf", "https:// /x"})
            QVERIFY2(opened(QString::fromUtf8(none)) == u"none"_s, none);
        QCOMPARE(opened(u"https://a.example/"_s + QString(100'000, u'a')), u"none"_s);
    }

    void googleMeetingsAreTakenAsTheyCame()
    {
        Desk desk;
        // The list isn't sorted or cut again: a meeting that is over stays until the service is read again.
        desk.useGoogle(
            {desk.meeting("over", -2h), desk.meeting("b", 3h), desk.meeting("c", 14h + 59min), desk.meeting("tomorrow", 15h)});
        QCOMPARE(desk.source.nextEvent()->id, u"google-over"_s);
        QCOMPARE(desk.source.nextEvent()->detail(), u"Google Calendar"_s);
        QCOMPARE(desk.source.leftToday(), 3);
        QCOMPARE(desk.source.calendarState(), SourceState::ready());
        // Midnight passes, even if the machine sleeps.
        desk.clock.setWallTime(desk.in(15h));
        desk.clock.advance(15s);
        QCOMPARE(desk.source.leftToday(), 1);

        desk.useGoogle({{u"z"_s, u"Review"_s, desk.in(1h), desk.in(2h), QUrl(u"zoommtg://zoom.example/join"_s), {}}});
        QVERIFY(!desk.source.nextEvent()->joinURL); // a link that can't be opened isn't offered

        desk.useGoogle({});
        QCOMPARE(desk.source.calendarState(), SourceState::loading());
        QCOMPARE(desk.source.calendarToShow(), SourceState::loading());
        desk.google.hasAnswered = true;
        QCOMPARE(desk.source.calendarToShow(), SourceState::ready()); // nothing is on, and "checking" doesn't last for ever
        desk.google.problem = u"Google sign-in failed"_s;
        QCOMPARE(desk.source.calendarToShow(), SourceState::failed(u"Google sign-in failed."_s));
        QVERIFY(!desk.source.hasNextEvent());
        QCOMPARE(desk.source.leftToday(), 0);
        QCOMPARE(desk.google.refreshes, 0);
        desk.source.refresh();
        QCOMPARE(desk.google.refreshes, 1);
        desk.prefs.set(Prefs::Module::Calendar, false);
        desk.source.refresh();
        QCOMPARE(desk.google.refreshes, 1); // only where it is wanted
        desk.google.isLinked = false;
        desk.source.loadCalendar();
        QCOMPARE(desk.source.calendarState().reason(), u"Google Calendar is not connected."_s);
        QCOMPARE(desk.source.calendarState().fix(), u"Connect it in the Connect tab."_s);
    }

    void warnsOnceRightBefore()
    {
        for (const auto &[ahead, warns] :
             {std::pair<std::chrono::milliseconds, bool>(300s, false), {300s - 1ms, true}, {-60s + 1ms, true}, {-60s, false}}) {
            Desk desk;
            desk.source.waitingAgents = [] { return 1; };
            desk.useGoogle(
                {{u"a"_s, u"<b>Standup</b> & %1"_s, desk.in(ahead + 15s), desk.in(1h), QUrl(u"https://meet.example.com"_s), {}}});
            desk.clock.advance(15s);
            QCOMPARE(desk.peeks.size(), warns ? 1 : 0);
            if (!warns)
                continue;
            const Peek peek = desk.peeks.front();
            QCOMPARE(peek.symbol, u"calendar"_s);
            QVERIFY2(peek.text.startsWith(u"<b>Standup</b> & %1 "_s), qPrintable(peek.text));
            QVERIFY2(peek.text.endsWith(u" · 1 agent still waits on you"_s), qPrintable(peek.text));
            QCOMPARE(peek.tone, Peek::Tone::Warn);
            QCOMPARE(peek.tab, std::optional(Tab::Home));
            QCOMPARE(peek.url, std::optional(QUrl(u"https://meet.example.com"_s)));
            QVERIFY(!peek.resume && !peek.cwd && !peek.decide);
            desk.clock.advance(10min);
            QCOMPARE(desk.peeks.size(), 1);
        }
    }
    void meetingsThatBeginTogetherAreAllAnnounced()
    {
        Desk desk;
        desk.source.waitingAgents = [] { return 2; };
        desk.useGoogle({desk.meeting("a", 4min), desk.meeting("b", 4min), desk.meeting("c", 5min), desk.meeting("d", 30min)});
        desk.clock.advance(2min);
        const QString waiting = u" · 2 agents still wait on you"_s;
        QCOMPARE(desk.texts(), QStringList({u"a in 4 min"_s + waiting, u"b in 4 min"_s + waiting, u"c in 5 min"_s + waiting}));
    }
    void warningOfAMeetingThatIsMovedComesAgain()
    {
        Desk desk;
        desk.type(u"Standup"_s, desk.in(4min));
        desk.clock.advance(15s);
        desk.type(u"Standup"_s, desk.in(20min));
        desk.clock.advance(16min);
        QCOMPARE(desk.texts(), QStringList({u"Standup in 4 min"_s, u"Standup in 5 min"_s}));
        // A clock set back causes no third warning.
        desk.clock.setWallTime(desk.in(-20min));
        desk.clock.advance(30min);
        QCOMPARE(desk.peeks.size(), 2);

        Desk asleep;
        asleep.type(u"Standup"_s, asleep.in(10min));
        asleep.clock.setWallTime(asleep.in(30min));
        asleep.clock.advance(15s);
        QVERIFY(asleep.peeks.isEmpty());
        QCOMPARE(asleep.source.nextEventText(), u"Standup now · until 10:10"_s);
        asleep.prefs.set(Prefs::Module::Calendar, false);
        asleep.type(u"Standup"_s, asleep.in(4min));
        asleep.clock.advance(30min);
        QVERIFY(asleep.peeks.isEmpty() && asleep.source.hasNextEvent());
    }

    void announcesEachTurnOfTheTextAndNothingElse()
    {
        Desk desk;
        desk.type(u"Standup"_s, desk.in(61min + 7s));
        const auto changes = desk.changes.size();
        desk.clock.advance(67s);
        QCOMPARE(desk.changes.size(), changes);
        desk.clock.advance(1ms);
        QCOMPARE(desk.source.nextEventText(), u"Standup in 60 min"_s);
        QCOMPARE(desk.changes.size(), changes + 1);
        desk.clock.advance(60min - 1ms);
        QCOMPARE(desk.source.nextEventText(), u"Standup now · until 11:01"_s);
        QCOMPARE(desk.changes.size(), changes + 61);
        desk.source.refresh();
        desk.clock.advance(30min);
        QCOMPARE(desk.changes.size(), changes + 61);
    }
};

const Registered<CalendarTest> registered;

} // namespace velto

#include "CalendarTest.moc"
