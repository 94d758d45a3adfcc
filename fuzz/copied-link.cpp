// Any text that some program copied, or the user typed as an address: what is taken for a link is one, no password is kept, and
// the page that plays it holds nothing but the player.

#include "Core/Link.h"
#include "Feeds/Glances/ClipboardPreview.h"
#include "Feeds/Glances/VideoPreview.h"

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// One element that plays: whatever the link is, it ends neither the attribute nor the element.
void requirePlayerOnly(const QString &html)
{
    const bool isFrame = html.contains("<iframe"_L1);
    require(html.count(u'<') == 6 && html.count(u'>') == 6);
    require(html.count(u'\'') == (isFrame ? 12 : 8));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)
{
    // A line for the text, and what a service answers about it.
    const QByteArray bytes(data, qsizetype(size));
    const qsizetype end = bytes.indexOf('\n');
    const QString text = QString::fromUtf8(end < 0 ? bytes : bytes.left(end));
    const QString kept = velto::withoutPassword(text);
    require(QUrl(kept).password().isEmpty() && velto::withoutPassword(kept) == kept);
    if (const auto typed = velto::typedLink(text))
        require(velto::opensInBrowser(*typed));

    const auto preview = velto::previewOf(text);
    require(preview.has_value() == velto::linkIn(text).has_value());
    if (!preview)
        return 0;
    require(preview->url.isValid() && !preview->url.host().isEmpty() && !preview->title.isEmpty());
    requirePlayerOnly(velto::videoPage(preview->url).html);
    if (const auto more = velto::upgraded(*preview, bytes.mid(end + 1)))
        require(more->url == preview->url && more->title.size() <= 1000);
    return 0;
}
