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
    // "meet.example.com/abc"; a single word isn't a host.
    const QString trimmed = text.trimmed();
    auto url = trimmed.contains(u':') ? std::nullopt : linkIn("https://"_L1 + trimmed);
    return url && url->host().contains(u'.') ? url : std::nullopt;
}

QString withoutPassword(const QString &address)
{
    const qsizetype scheme = address.indexOf("://"_L1);
    const auto isOutside = [](QChar c) { return c == u'/' || c == u'?' || c == u'#'; };
    // "//me:secret@host/?from=https://other" has none.
    const bool hasScheme = scheme >= 0 && std::none_of(address.begin(), address.begin() + scheme, isOutside);
    qsizetype from = hasScheme ? scheme + 3 : 0;
    while (from < address.size() && address[from] == u'/')
        ++from;
    qsizetype end = from;
    while (end < address.size() && !isOutside(address[end]))
        ++end;
    const qsizetype at = address.lastIndexOf(u'@', end - 1);
    const qsizetype colon = address.indexOf(u':', from);
    if (end == from || at < from || colon < 0 || colon > at)
        return address;
    return address.first(colon) + address.sliced(at);
}

} // namespace velto
