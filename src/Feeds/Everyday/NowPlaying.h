#pragma once

#include "Platform/MediaPlayers.h"

#include <optional>

namespace velto {

/// What a media player plays, or has paused.
struct NowPlaying {
    QString app; ///< the player's name
    QString track;
    QString artist; ///< may be empty
    bool playing = false;

    bool operator==(const NowPlaying &) const = default;
};

/// Which of the running players are asked. Spotify wins, then Music. A desktop without Music has other players in its place,
/// and no one of them is the user's player by its name: all are asked, and chosenPlayer() decides by what they say.
QList<MediaPlayer> playersToAsk(const QList<MediaPlayer> &running);

/// What one player's answer means. Nothing if it has stopped, names no track, or failed; also if a name holds a tab, since some
/// platforms return track, artist and state in one line separated by tabs, and all should show the same.
std::optional<NowPlaying> nowPlaying(const MediaPlayer &player, const std::optional<MediaReport> &report);

/// Which of several answers is shown: one that plays before one that pauses, then the one at `shown`, then the first.
/// -1 if none has anything to show.
qsizetype chosenPlayer(const QList<std::optional<NowPlaying>> &answers, qsizetype shown);

} // namespace velto
