#include "Feeds/Glances/GlanceSource.h"

#include "Core/Http.h"
#include "Core/Link.h"
#include "Core/Prefs.h"
#include "Platform/Background.h"
#include "Platform/Clipboard.h"
#include "Platform/Clock.h"

#include <QPointer>
#include <QSocketNotifier>
#include <QUrlQuery>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kInterval{8};
constexpr qint64 kLargestAnswer = 1 << 20;
/// GitHub is asked less and less often while it doesn't answer, which includes that nobody is signed in. And nothing reports
/// that a disk was mounted, so this often the folder is looked at regardless.
constexpr std::chrono::seconds kLongestBreak{300};

} // namespace

GlanceSource::GlanceSource(Needs needs, QObject *parent)
    : QObject(parent)
    , m_needs(std::move(needs))
    , m_start(m_needs.clock.now())
{
    refreshClipboard();
    m_needs.clipboard.copied = [this] { waitFor({}); };
    connect(&m_needs.prefs, &Prefs::changed, this, [this] { waitFor({}); });
    waitFor({});
}

GlanceSource::~GlanceSource()
{
    m_needs.clipboard.copied = [] {};
}

void GlanceSource::refresh()
{
    m_break = kInterval;
    m_nextListing = m_nextBuilds = {};
    look();
}

// One reading of each kind at a time: a disk that hangs must not take up all threads.
void GlanceSource::look()
{
    refreshClipboard();
    // The answer took a moment, so the turn that was meant comes a little early.
    const auto now = m_needs.clock.now() + kInterval / 2;
    if (!m_listing && (now >= m_nextListing || !m_transfers.stillSo()))
        readDownloads();
    if (!m_asking && m_needs.prefs.anyOn() && now >= m_nextBuilds)
        readBuilds();
    settle();
}

/// Waits for the turn that has something to do.
void GlanceSource::settle()
{
    if (m_listing || m_asking || !m_transfers.changes) {
        waitFor({});
        return;
    }
    wakeByDownloads();
    const auto next = m_needs.prefs.anyOn() ? std::min(m_nextListing, m_nextBuilds) : m_nextListing;
    waitFor(std::chrono::ceil<std::chrono::milliseconds>(next - m_needs.clock.now() - kInterval / 2));
}

/// Until the first turn that is no sooner than that; {} is the next one. Where whoever looks at every turn would look.
void GlanceSource::waitFor(std::chrono::milliseconds least)
{
    using std::chrono::milliseconds;
    const auto passed = std::chrono::duration_cast<milliseconds>(m_needs.clock.now() - m_start) % kInterval;
    milliseconds toNext = kInterval - passed;
    if (toNext < kInterval / 8) // a timer that was early
        toNext += kInterval;
    const auto more = std::max(milliseconds(0), least - toNext);
    const auto turns = (more + kInterval - milliseconds(1)) / kInterval;
    m_turn = m_needs.clock.after(toNext + turns * kInterval, [this] { look(); });
}

void GlanceSource::wakeByDownloads()
{
    if (m_downloadsChange)
        return;
    m_downloadsChange = std::make_unique<QSocketNotifier>(m_transfers.descriptor(), QSocketNotifier::Read);
    connect(m_downloadsChange.get(), &QSocketNotifier::activated, this, [this] {
        m_downloadsChange->setEnabled(false); // until the folder is looked at
        waitFor({});
    });
}

void GlanceSource::readDownloads()
{
    m_listing = true;
    m_nextListing = m_needs.clock.now() + kLongestBreak;
    m_downloadsChange.reset();
    // Handed over whole: to stop following a folder takes the kernel tens of milliseconds, which are spent in the background.
    Transfers before = std::exchange(m_transfers, {m_transfers.count, {}, {}});
    inBackground(
        m_needs.background, this,
        [&tree = m_needs.fileTree, folder = m_needs.downloads, before = std::move(before), now = m_needs.clock.wallTime()] {
            return readTransfers(tree, folder, before, now);
        },
        [this](const Transfers &transfers) {
            m_listing = false;
            const bool same = std::exchange(m_transfers, transfers).count == transfers.count;
            settle();
            if (!same)
                Q_EMIT changed();
        });
}

void GlanceSource::readBuilds()
{
    m_asking = true;
    inBackground(
        m_needs.background, this, [&tools = m_needs.tools] { return readFailedBuilds(tools); },
        [this](const std::optional<int> &builds) {
            m_asking = false;
            m_nextBuilds = m_needs.clock.now() + (builds ? kInterval : m_break);
            m_break = builds ? kInterval : std::min(2 * m_break, kLongestBreak);
            settle();
            if (std::exchange(m_failedBuilds, builds.value_or(0)) != builds.value_or(0))
                Q_EMIT changed();
        });
}

void GlanceSource::refreshClipboard()
{
    const int count = m_needs.clipboard.changeCount();
    if (std::exchange(m_pasteboardChange, count) == count)
        return;
    // Text longer than any link needn't be fetched.
    m_needs.clipboard.read(kLongestLink, this, [this, count](const std::optional<QString> &text) {
        if (count != m_pasteboardChange)
            return; // there is a newer copy, which is being read
        show(text ? previewOf(*text) : std::nullopt);
        if (m_clipboard && isYouTube(m_clipboard->url))
            loadYouTube(m_clipboard->url);
    });
}

void GlanceSource::show(const std::optional<ClipboardPreview> &preview)
{
    if (preview == m_clipboard)
        return;
    m_clipboard = preview;
    Q_EMIT changed();
}

/// YouTube's oEmbed: GET /oembed?url=...&format=json, no key, no stated limit (https://oembed.com).
QCoro::Task<> GlanceSource::loadYouTube(QUrl url)
{
    const QPointer alive(this);
    // Encoded here: QUrlQuery would leave the link's "&" and "+" as they are.
    const QByteArray link = url.toString(QUrl::FullyEncoded | QUrl::RemoveUserInfo).toUtf8().toPercentEncoding();
    QUrl question = m_needs.oEmbed;
    question.setQuery(QString::fromLatin1("url=" + link + "&format=json"), QUrl::StrictMode);
    HttpRequest request; // named: GCC 12 destroys an aggregate twice that is created within a co_await
    request.url = question;
    request.maximum = kLargestAnswer;
    const HttpReply reply = co_await m_needs.http.send(std::move(request));
    if (!alive || !reply.status)
        co_return;
    // The user may have copied something else meanwhile.
    if (!m_clipboard || m_clipboard->url != url)
        co_return;
    if (const auto better = upgraded(*m_clipboard, reply.body))
        show(better);
}

void GlanceSource::setPlayingVideo(const QUrl &url)
{
    if (m_playingVideo == url)
        return;
    m_playingVideo = url;
    Q_EMIT changed();
}

void GlanceSource::closeVideo()
{
    if (std::exchange(m_playingVideo, std::nullopt))
        Q_EMIT changed();
}

} // namespace velto
