#include "Feeds/Glances/VideoPreview.h"

#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr auto kShortHost = "youtu.be"_L1;
constexpr auto kEmbedHost = "https://www.youtube-nocookie.com"_L1;

} // namespace

std::optional<QString> youtubeID(const QUrl &url)
{
    if (url.host().contains(kShortHost)) {
        const QStringList path = url.path().split(u'/', Qt::SkipEmptyParts);
        return path.isEmpty() ? std::nullopt : std::optional(path.first());
    }
    // "/shorts/ID" and "/live/ID" are ordinary videos.
    const QStringList path = url.path().split(u'/', Qt::SkipEmptyParts);
    if (path.size() == 2 && (path[0] == "shorts"_L1 || path[0] == "live"_L1 || path[0] == "embed"_L1))
        return path[1];
    const QUrlQuery query(url);
    const QString id = query.queryItemValue(u"v"_s, QUrl::FullyDecoded);
    return id.isEmpty() ? std::nullopt : std::optional(id);
}

VideoPage videoPage(const QUrl &url)
{
    const QString head = u"<html><body style='margin:0;background:#000;overflow:hidden'>\n"_s;
    const auto id = youtubeID(url);
    if (!id) {
        // Fully percent-encoded, an address contains no quotation mark that could end the attribute.
        const QString address = QString::fromLatin1(url.toEncoded(QUrl::FullyEncoded)).replace(u'\'', u"%27"_s).toHtmlEscaped();
        return {head + u"<video width='100%' height='100%' src='%1' controls autoplay></video>\n</body></html>"_s.arg(address),
                url};
    }
    // Everything but letters and digits is encoded.
    const QString escaped = QString::fromLatin1(QUrl::toPercentEncoding(*id, {}, "-._~"));
    return {head
                + u"<iframe width='100%' height='100%' src='%1/embed/%2?autoplay=1&playsinline=1'\n"
                  "  frameborder='0' allow='autoplay; encrypted-media; picture-in-picture' allowfullscreen></iframe>\n"
                  "</body></html>"_s.arg(kEmbedHost, escaped),
            QUrl(kEmbedHost)};
}

} // namespace velto
