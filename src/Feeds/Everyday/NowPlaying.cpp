#include "Feeds/Everyday/NowPlaying.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

using Known = MediaPlayer::Known;

/// In order of priority.
constexpr std::array kKnown{Known::Spotify, Known::Music};

QString nameOf(const MediaPlayer &player, const MediaReport &report)
{
    switch (player.known) {
    case Known::Spotify:
        return u"Spotify"_s;
    case Known::Music:
        return u"Music"_s;
    case Known::No:
        break;
    }
    return report.player.trimmed();
}

} // namespace

QList<MediaPlayer> playersToAsk(const QList<MediaPlayer> &running)
{
    for (const Known known : kKnown) {
        const auto found = std::ranges::find(running, known, &MediaPlayer::known);
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
