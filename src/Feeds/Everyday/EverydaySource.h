#pragma once

#include "Core/Peek.h"
#include "Core/SourceState.h"
#include "Feeds/Calendar/NextEvent.h"
#include "Feeds/Everyday/NowPlaying.h"
#include "Platform/Timer.h"

#include <QObject>
#include <QSet>
#include <functional>

namespace velto {

class Clock;
class MeetingFeed;
class Prefs;
class Sounds;

/// The small things of the working day: the next calendar event with its warning, the focus countdown, and what is playing.
/// Its own tick of 15 seconds checks the clock; in between it wakes only when a text that it publishes changes.
///
/// What plays comes from the platform's players (MediaPlayers), and the decisions are made here: Spotify wins if it runs, even
/// paused. Where the platform has Music, that comes next. On Linux there is no such program: any other MPRIS player takes its
/// place, by the name that it gives itself, since what people listen to there is as often a browser or a video player; of
/// several, one that plays is shown before one that pauses. Only players that run are asked, and asking starts none.
///
/// Lives on the UI thread, never blocks it.
class EverydaySource : public QObject {
    Q_OBJECT
    Q_PROPERTY(velto::SourceState calendarState READ calendarState NOTIFY changed FINAL)
    Q_PROPERTY(bool hasNextEvent READ hasNextEvent NOTIFY changed FINAL)
    /// The next event's title and when it is, in one line.
    Q_PROPERTY(QString nextEventText READ nextEventText NOTIFY changed FINAL)
    Q_PROPERTY(int leftToday READ leftToday NOTIFY changed FINAL)
    Q_PROPERTY(bool playing READ playing NOTIFY changed FINAL)
    Q_PROPERTY(bool focusing READ focusing NOTIFY changed FINAL)
    Q_PROPERTY(QString focusRemaining READ focusRemaining NOTIFY changed FINAL)
    Q_PROPERTY(int focusMinutes READ focusMinutes CONSTANT FINAL)
public:
    /// What the source uses; all of it outlives the source.
    struct Needs {
        Clock &clock;
        Prefs &prefs;
        MeetingFeed &meetings;
        MediaPlayers &players;
        Sounds &sounds;
    };
    explicit EverydaySource(Needs needs, QObject *parent = nullptr);
    ~EverydaySource() override;

    std::optional<NextEvent> nextEvent() const { return m_nextEvent; }
    SourceState calendarState() const { return m_calendarState; }
    /// The same, to be shown: once the account has answered, an empty calendar no longer counts as loading, and what is wrong
    /// with it is reported.
    SourceState calendarToShow() const;
    /// Opens the dialog of the keyring that keeps the meetings' account.
    void unlock();
    /// How many of the meetings start today.
    int leftToday() const { return m_leftToday; }
    std::optional<NowPlaying> nowPlaying() const { return m_nowPlaying; }
    /// When the running focus period ends.
    std::optional<QDateTime> focusEnd() const { return m_focusEnd; }
    /// The length of a focus period.
    int focusMinutes() const { return 25; }
    /// Minutes and seconds to the end of the focus period, "24:59"; empty if none runs.
    QString focusRemaining() const;

    bool hasNextEvent() const { return m_nextEvent.has_value(); }
    QString nextEventText() const;
    bool playing() const { return m_nowPlaying && m_nowPlaying->playing; }
    bool focusing() const { return m_focusEnd.has_value(); }

    /// How many agents wait for the user.
    std::function<int()> waitingAgents = [] { return 0; };

    /// Asks for fresh meetings and for what plays; returns at once.
    Q_INVOKABLE void refresh();
    /// Determines the next event again from what is stored. No network.
    Q_INVOKABLE void loadCalendar();
    /// Asks the players. Of several such rounds under way the last one to finish wins.
    void loadMedia();
    /// Pauses the player on show or lets it play on, and shows that at once.
    Q_INVOKABLE void playPause();
    Q_INVOKABLE void startFocus();
    Q_INVOKABLE void stopFocus();

Q_SIGNALS:
    void changed();
    /// There is news for the user.
    void peekWanted(const velto::Peek &peek);

private:
    /// What others see, kept to detect whether anything has changed.
    struct Published {
        std::optional<NextEvent> nextEvent;
        QString relative;
        SourceState calendarState = SourceState::loading();
        SourceState calendarToShow = SourceState::loading();
        int leftToday = 0;
        std::optional<NowPlaying> nowPlaying;
        std::optional<QDateTime> focusEnd;
        QString focusRemaining;

        bool operator==(const Published &) const = default;
    };
    /// One round of asking several players.
    struct Asking {
        QList<MediaPlayer> players;
        QList<std::optional<NowPlaying>> answers;
        qsizetype open = 0;
        int presses = 0;
    };

    void tick();
    void loadTypedIn(const QDateTime &now);
    void loadFeed(const QDateTime &now);
    void warn();
    void warnOf(const NextEvent &event);
    void endFocus();
    void settle(const Asking &asking);
    void showPlayer(const QString &id, const std::optional<NowPlaying> &playing);
    void publish();
    void keepTicking();
    void watchForTurn(const QDateTime &now);

    Needs m_needs;
    std::optional<NextEvent> m_nextEvent;
    SourceState m_calendarState = SourceState::loading();
    int m_leftToday = 0;
    std::optional<NowPlaying> m_nowPlaying;
    QString m_player; ///< the one that m_nowPlaying is of
    int m_presses = 0;
    std::optional<QDateTime> m_focusEnd;
    QSet<QString> m_peekedEvents; ///< announced since the start; never forgotten
    Published m_published;
    TimerHandle m_tick; ///< while there is something to follow
    TimerHandle m_turn;
    TimerHandle m_mediaSoon;
};

} // namespace velto
