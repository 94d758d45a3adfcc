#include "Feeds/Everyday/Desk.h"
#include "RunTests.h"

namespace velto {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using State = MediaReport::State;

/// Which player is shown and what of it, and the countdown of the focus timer and its end.
class MediaAndFocusTest : public QObject {
    Q_OBJECT
    static FakeMediaPlayers::Player player(const QString &id, const QString &track, State state,
                                           MediaPlayer::Known known = MediaPlayer::Known::No)
    {
        return {{id, known}, MediaReport{id.toUpper(), track, u"Artist"_s, state}};
    }

private Q_SLOTS:
    void showsOnePlayer()
    {
        const auto row = [](const char *name, const QList<FakeMediaPlayers::Player> &players, const QString &shown, int asked) {
            Desk desk;
            desk.players.players = players;
            desk.source.loadMedia();
            const auto now = desk.source.nowPlaying();
            QVERIFY2((now ? now->app + u' ' + now->track + u" by "_s + now->artist : QString()) == shown
                         && desk.players.asked.size() == asked,
                     name);
        };
        const auto spotify = [](State state) { return player(u"s"_s, u"song"_s, state, MediaPlayer::Known::Spotify); };
        const auto music = player(u"m"_s, u"tune"_s, State::Playing, MediaPlayer::Known::Music);
        const auto vlc = player(u"vlc"_s, u"film"_s, State::Playing);
        const auto mpv = player(u"mpv"_s, u"clip"_s, State::Playing);
        const auto paused = player(u"firefox"_s, u"page"_s, State::Paused);
        const auto stopped = player(u"amarok"_s, u"old"_s, State::Stopped);
        row("none", {}, QString(), 0);
        row("Spotify wins", {vlc, music, spotify(State::Playing)}, u"Spotify song by Artist"_s, 1);
        row("Spotify wins paused", {vlc, spotify(State::Paused)}, u"Spotify song by Artist"_s, 1);
        row("Spotify wins stopped", {vlc, spotify(State::Stopped)}, QString(), 1);
        row("Music before others", {vlc, music}, u"Music tune by Artist"_s, 1);
        row("another, by its name", {vlc}, u"VLC film by Artist"_s, 1);
        row("playing before paused", {paused, stopped, mpv}, u"MPV clip by Artist"_s, 3);
        row("paused before stopped", {stopped, paused}, u"FIREFOX page by Artist"_s, 2);
        row("first of two", {mpv, vlc}, u"MPV clip by Artist"_s, 2);
        row("one that fails", {{{u"x"_s}, std::nullopt}, vlc}, u"VLC film by Artist"_s, 2);
        row("stopped", {stopped}, QString(), 1);
        const auto titled = [](const QString &track, const QString &artist) {
            return FakeMediaPlayers::Player{{u"p"_s}, MediaReport{u"P"_s, track, artist, State::Paused}};
        };
        row("nobody's", {titled(u"Song"_s, {})}, u"P Song by "_s, 1);
        row("without a title", {titled(u" \n"_s, u"Band"_s)}, QString(), 1);
        row("a tab in the title", {titled(u"So\tng"_s, u"Band"_s)}, QString(), 1);
        row("a tab in the name", {titled(u"Song"_s, u"Ba\tnd"_s)}, QString(), 1);
        row("markup", {titled(u"<img src=x>"_s, u"&amp;"_s)}, u"P <img src=x> by &amp;"_s, 1);
    }

    void pressShowsAtOnceAndTheTickCorrects()
    {
        Desk desk;
        desk.source.playPause();
        QVERIFY(desk.players.pressed.isEmpty());
        desk.players.players = {player(u"mpv"_s, u"clip"_s, State::Playing)};
        desk.source.loadMedia();
        const auto changes = desk.changes.size();
        desk.players.players.prepend(player(u"firefox"_s, u"page"_s, State::Playing)); // the one on show stays
        desk.source.loadMedia();
        QCOMPARE(desk.changes.size(), changes);
        desk.players.players.removeFirst();
        desk.source.playPause();
        QCOMPARE(desk.players.pressed, QStringList{u"mpv"_s});
        QVERIFY(!desk.source.playing());
        QCOMPARE(desk.source.nowPlaying()->track, u"clip"_s);
        desk.clock.advance(15s); // playback continues
        QVERIFY(desk.source.playing());

        desk.players.slow = true;
        desk.source.loadMedia();
        desk.source.playPause();
        desk.players.answer(); // from before the press
        QVERIFY(!desk.source.playing());
        for (const QString &track : {u"first"_s, u"second"_s}) {
            desk.players.players = {player(u"mpv"_s, track, State::Playing)};
            desk.source.loadMedia();
        }
        desk.players.answer(1);
        QCOMPARE(desk.source.nowPlaying()->track, u"second"_s);
        desk.players.answer(0); // the last answer wins
        QCOMPARE(desk.source.nowPlaying()->track, u"first"_s);
    }

    void changesAreFollowedInBurstsAndOnlyWithTheModuleOn()
    {
        Desk desk;
        desk.players.players = {player(u"mpv"_s, u"clip"_s, State::Playing)};
        for (int i = 0; i < 50; ++i)
            Q_EMIT desk.players.changed();
        desk.clock.advance(100ms);
        QCOMPARE(desk.players.asked.size(), 1);
        QVERIFY(desk.source.playing());
        desk.prefs.set(Prefs::Module::Media, false);
        Q_EMIT desk.players.changed();
        desk.source.refresh();
        desk.clock.advance(1min);
        QCOMPARE(desk.players.asked.size(), 1);
    }

    void sourceThatGoesWhileItAsks()
    {
        Desk desk;
        const auto timers = desk.clock.pendingTimers();
        desk.players.slow = true;
        desk.players.players = {player(u"mpv"_s, u"clip"_s, State::Playing)};
        EverydaySource({desk.clock, desk.prefs, desk.google, desk.players, desk.sounds}).loadMedia();
        desk.players.answer();
        QCOMPARE(desk.players.waiting(), 0);
        QCOMPARE(desk.clock.pendingTimers(), timers);
    }

    void countsDownByTheSecondToAPeekAndASound()
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
        desk.prefs.set(Prefs::Module::Focus, false); // a period that runs ends all the same
        desk.clock.advance(9min + 8s - 2ms);
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

        desk.source.startFocus(); // and one that is stopped says nothing
        desk.source.stopFocus();
        QVERIFY(!desk.source.focusing());
        changes = desk.changes.size();
        desk.clock.advance(1h);
        QCOMPARE(desk.changes.size(), changes);
        QCOMPARE(desk.peeks.size(), 1);
        QCOMPARE(desk.sounds.played.size(), 1);
    }

    void clockThatJumps()
    {
        // Slept over the end, slept a little, and set back; what remains a second later, or nothing if the period has ended.
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
};

const Registered<MediaAndFocusTest> registered;

} // namespace velto

#include "MediaAndFocusTest.moc"
