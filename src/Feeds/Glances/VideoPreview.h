#pragma once

#include <QString>
#include <QUrl>
#include <optional>

namespace velto {

/// A page that holds a player, and the address that it should appear to come from.
struct VideoPage {
    QString html;
    QUrl base;
};

/// Which video a YouTube link leads to; nothing if it leads to none.
std::optional<QString> youtubeID(const QUrl &url);
/// The page that plays the link: YouTube's own player, without its cookies
/// (https://developers.google.com/youtube/player_parameters), or a plain one.
VideoPage videoPage(const QUrl &url);

} // namespace velto
