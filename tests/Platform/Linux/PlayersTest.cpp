#include "Platform/Linux/MprisPlayers.h"
#include "PrivateBus.h"
#include "RunTests.h"

#include <QDBusMetaType>
#include <QSignalSpy>
#include <QStandardPaths>

using namespace velto;
using namespace Qt::StringLiterals;
using State = MediaReport::State;

namespace {

const auto kPath = u"/org/mpris/MediaPlayer2"_s;
const auto kPlayer = u"org.mpris.MediaPlayer2.Player"_s;

QString name(const char *suffix)
{
    return u"org.mpris.MediaPlayer2."_s + QString::fromLatin1(suffix);
}

QVariant playing(const QVariantMap &metadata, const QString &status = u"Playing"_s)
{
    return QVariantMap{{u"PlaybackStatus"_s, status}, {u"Metadata"_s, metadata}, {u"Volume"_s, 0.5}};
}

} // namespace

/// Which players are on the bus, and what they report. With the real player at the end, if there is one.
class PlayersTest : public QObject {
    Q_OBJECT
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<MprisPlayers> m_players;

    std::unique_ptr<PlayedService> player(const char *suffix, const QVariant &everything = playing({}))
    {
        auto service = std::make_unique<PlayedService>(m_bus->connect(), name(suffix));
        service->answers = {{u"Get:Identity"_s, u"Name of it"_s}, {u"GetAll"_s, everything}};
        return service;
    }
    QStringList running() const
    {
        QStringList ids;
        for (const MediaPlayer &player : m_players->running())
            ids.append(player.id);
        return ids;
    }
    std::optional<MediaReport> ask(const QString &id)
    {
        std::optional<std::optional<MediaReport>> answer;
        m_players->ask(id, this, [&](const std::optional<MediaReport> &report) { answer = report; });
        return QTest::qWaitFor([&] { return answer.has_value(); }) ? *answer : std::nullopt;
    }

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        if (!m_bus->works())
            QSKIP("no dbus-daemon");
        m_players = std::make_unique<MprisPlayers>();
    }
    void cleanup()
    {
        m_players.reset();
        m_bus.reset();
    }

    void followsWhoComesAndGoes()
    {
        const auto early = player("vlc.instance7");
        const auto standIn = player("playerctld");
        const PlayedService other(m_bus->connect(), u"org.example.Other"_s);
        m_players->start(m_bus->connect());
        QTRY_COMPARE(running(), QStringList{name("vlc.instance7")});
        QSignalSpy changes(m_players.get(), &MediaPlayers::changed);
        auto spotify = player("spotify");
        QTRY_COMPARE(running(), (QStringList{name("spotify"), name("vlc.instance7")}));
        QCOMPARE(m_players->running().front().known, MediaPlayer::Known::Spotify);
        QCOMPARE(m_players->running().back().known, MediaPlayer::Known::No);
        spotify.reset();
        QTRY_COMPARE(running().size(), 1);
        QCOMPARE(changes.size(), 2);
        // Nobody was asked anything.
        QVERIFY(early->asked.isEmpty() && standIn->asked.isEmpty());
    }

    void hearsOfTracksAndNotOfVolume()
    {
        m_players->start(m_bus->connect());
        const auto vlc = player("vlc");
        QTRY_COMPARE(running().size(), 1);
        QSignalSpy changes(m_players.get(), &MediaPlayers::changed);
        vlc->emitPropertyChange(kPath, kPlayer, u"Volume"_s, 0.1);
        vlc->emitPropertyChange(kPath, u"org.mpris.MediaPlayer2.TrackList"_s, u"Metadata"_s, QVariantMap());
        vlc->emitPropertyChange(kPath, kPlayer, u"PlaybackStatus"_s, u"Paused"_s);
        QTRY_COMPARE(changes.size(), 1);
        vlc->emitSignal(kPath, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s,
                        {kPlayer, QVariantMap(), QStringList{u"Metadata"_s}});
        QTRY_COMPARE(changes.size(), 2);
    }

    void readsWhatAPlayerSays()
    {
        m_players->start(m_bus->connect());
        const auto row = [this](const char *what, const QVariant &everything, const QString &said) { // track, artist, state
            const auto vlc = player("vlc", everything);
            QTRY_COMPARE(running().size(), 1);
            const auto report = ask(name("vlc"));
            const auto heard = report ? u"%1|%2|%3"_s.arg(report->track, report->artist).arg(int(report->state)) : u"nothing"_s;
            QVERIFY2(heard == said, what);
            QVERIFY(!report || report->player == u"Name of it"_s);
            QCOMPARE(bool(ask(name("vlc"))), bool(report));
            QVERIFY(vlc->asked.count(u"Get:Identity"_s) <= 1); // the name is asked for once
        };
        const auto title = std::pair(u"xesam:title"_s, QVariant(u"Song"_s));
        row("playing", playing({title, {u"xesam:artist"_s, QStringList{u"A"_s, u"B"_s}}}), u"Song|A, B|2"_s);
        row("paused, artist as a text", playing({title, {u"xesam:artist"_s, u"A"_s}}, u"Paused"_s), u"Song|A|1"_s);
        row("stopped", playing({title}, u"Stopped"_s), u"Song||0"_s);
        row("unknown state", playing({title}, u"Bored"_s), u"Song||0"_s);
        row("wrong types", playing({{u"xesam:title"_s, 7}, {u"xesam:artist"_s, QVariantMap{}}}), u"||2"_s);
        row("no metadata", QVariantMap{{u"PlaybackStatus"_s, u"Playing"_s}}, u"||2"_s);
        row("metadata of another kind", QVariantMap{{u"PlaybackStatus"_s, 3}, {u"Metadata"_s, QStringList{u"x"_s}}}, u"||0"_s);
        row("endless", playing({{u"xesam:title"_s, QString(5'000'000, u'x')}}), QString(1000, u'x') + u"||2"_s);
        row("no dictionary", u"no"_s, u"nothing"_s);

        QTRY_VERIFY(running().isEmpty());
        QVERIFY(!ask(name("gone")));
        m_players->playPause(name("gone"));
        const auto nameless = player("vlc");
        nameless->answers.remove(u"Get:Identity"_s);
        QTRY_COMPARE(running().size(), 1);
        QCOMPARE(ask(name("vlc")).value_or(MediaReport()).player, u"vlc"_s);
        MprisPlayers alone;
        alone.start(QDBusConnection(u"none"_s));
        QVERIFY(alone.running().isEmpty());
    }

    void realPlayer()
    {
        if (QStandardPaths::findExecutable(u"mpv"_s).isEmpty())
            QSKIP("no mpv");
        m_players->start(m_bus->connect());
        const QTemporaryDir home;
        QProcess mpv;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus->address());
        environment.insert(u"HOME"_s, home.path());
        mpv.setProcessEnvironment(environment);
        mpv.start(u"mpv"_s,
                  {u"--no-terminal"_s, u"--idle"_s, u"--ao=null"_s, u"--vo=null"_s, u"--force-media-title=Long <i>song</i>"_s,
                   u"av://lavfi:anullsrc"_s});
        QVERIFY(mpv.waitForStarted());
        if (!QTest::qWaitFor([&] { return running() == QStringList{name("mpv")}; }))
            QSKIP("no mpv-mpris");
        const auto says = [this](State state) {
            const auto report = ask(name("mpv"));
            return report && report->state == state && report->player == u"mpv"_s && report->track == u"Long <i>song</i>"_s;
        };
        QTRY_VERIFY(says(State::Playing));
        QSignalSpy changes(m_players.get(), &MediaPlayers::changed);
        m_players->playPause(name("mpv"));
        QTRY_VERIFY(!changes.isEmpty());
        QTRY_VERIFY(says(State::Paused));
        mpv.terminate();
        QTRY_VERIFY(running().isEmpty());
        mpv.waitForFinished();
    }
};

static const Registered<PlayersTest> kAdded;
#include "PlayersTest.moc"
