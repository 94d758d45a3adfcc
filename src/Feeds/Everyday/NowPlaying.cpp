#include "Feeds/Everyday/NowPlaying.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

struct KnownPlayer {
    QLatin1StringView application;
    QLatin1StringView name;
};

/// In the order in which they win.
constexpr std::array kKnown{
    KnownPlayer{"com.spotify.client"_L1, "Spotify"_L1},
    KnownPlayer{"com.apple.Music"_L1, "Music"_L1},
};

QString nameOf(const MediaPlayer &player, const MediaReport &report)
{
    const auto known = std::ranges::find(kKnown, player.application, &KnownPlayer::application);
    return known == kKnown.end() ? report.player.trimmed() : QString(known->name);
}

} // namespace

QList<MediaPlayer> playersToAsk(const QList<MediaPlayer> &running)
{
    for (const KnownPlayer &known : kKnown) {
        const auto found = std::ranges::find(running, known.application, &MediaPlayer::application);
        if (found != running.end())
            return {*found};
    }
    return running;
}

std::optional<NowPlaying> nowPlaying(const MediaPlayer &player, const std::optional<MediaReport> &report)
{
    if (!report || report->state == MediaReport::State::Stopped)
        return std::nullopt;
    const QString track = report->track.trimmed();
    const QString artist = report->artist.trimmed();
    if (track.isEmpty() || track.contains(u'\t') || artist.contains(u'\t'))
        return std::nullopt;
    return NowPlaying{nameOf(player, *report), track, artist, report->state == MediaReport::State::Playing};
}

qsizetype chosenPlayer(const QList<std::optional<NowPlaying>> &answers, qsizetype shown)
{
    const auto rank = [&](qsizetype i) {
        const auto &answer = answers[i];
        return answer ? (answer->playing ? 4 : 2) + (i == shown ? 1 : 0) : 0;
    };
    qsizetype best = -1;
    for (qsizetype i = 0; i < answers.size(); ++i) {
        if (rank(i) > (best < 0 ? 0 : rank(best)))
            best = i;
    }
    return best;
}

} // namespace velto
