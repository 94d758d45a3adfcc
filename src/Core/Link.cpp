#include "Core/Link.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

bool breaksLink(QChar c)
{
    return c.isSpace() || c.category() == QChar::Other_Control || c.category() == QChar::Other_Format;
}

} // namespace

std::optional<QUrl> linkIn(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.size() > kLongestLink || std::ranges::any_of(trimmed, breaksLink))
        return std::nullopt;
    const QUrl url(trimmed);
    if (!url.isValid() || url.host().isEmpty())
        return std::nullopt;
    return url;
}

bool opensInBrowser(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == "https"_L1 || url.scheme() == "http"_L1);
}

std::optional<QUrl> typedLink(const QString &text)
{
    if (auto url = linkIn(text); url && opensInBrowser(*url))
        return url;
    // "meet.example.com/abc"; a single word is no host.
    const QString trimmed = text.trimmed();
    auto url = trimmed.contains(u':') ? std::nullopt : linkIn("https://"_L1 + trimmed);
    return url && url->host().contains(u'.') ? url : std::nullopt;
}

} // namespace velto
