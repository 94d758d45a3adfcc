#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <optional>

namespace velto {

/// The link that the user copied, as a row shows it.
struct ClipboardPreview {
    QUrl url;
    QString title;
    QString detail;
    QString symbol;

    bool operator==(const ClipboardPreview &) const = default;
};

/// What can be said of a copied text without asking anyone. Nothing if it isn't a link.
std::optional<ClipboardPreview> previewOf(const QString &text);

/// Whether more can be learned of a link with YouTube's oEmbed.
bool isYouTube(const QUrl &link);

/// The preview of a YouTube link with what oEmbed answered (https://oembed.com/#section2.3). Nothing if the answer isn't an
/// object.
std::optional<ClipboardPreview> upgraded(const ClipboardPreview &preview, const QByteArray &answer);

} // namespace velto
