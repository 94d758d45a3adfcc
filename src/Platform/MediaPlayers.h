#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace velto {

/// A program that can play and is running.
struct MediaPlayer {
    /// The players that the logic knows.
    enum class Known : quint8 { Spotify, Music, No };

    QString id; ///< what the calls below take
    Known known = Known::No;
};

/// What a player says that it plays.
struct MediaReport {
    enum class State : quint8 { Stopped, Paused, Playing };

    QString player; ///< its name for people
    QString track;
    QString artist;
    State state = State::Stopped;
};

/// The media players of the desktop. Nothing here starts one. UI thread only; returns at once.
class MediaPlayers : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The running players, from memory, in an order that is stable while they run.
    virtual QList<MediaPlayer> running() const = 0;
    /// Asks a player what it plays. `done` runs on the UI thread, unless `context` is gone by then; with nothing after any
    /// failure, at the latest after ten seconds.
    virtual void ask(const QString &id, QObject *context, std::function<void(std::optional<MediaReport>)> done) = 0;
    /// Pauses a player, or lets it play on. Failures are silent.
    virtual void playPause(const QString &id) = 0;

Q_SIGNALS:
    /// A player came or went, or plays something else now. May come in bursts, and not at all from some players.
    void changed();
};

} // namespace velto
