#pragma once

#include "Feeds/Glances/ClipboardPreview.h"
#include "Feeds/Glances/GlanceReading.h"
#include "Platform/Timer.h"

#include <QObject>
#include <qcoro/qcorotask.h>

class QSocketNotifier;

namespace velto {

class Background;
class Clipboard;
class Clock;
class FileTree;
class Http;
class Prefs;
class ToolRunner;

/// What can be seen at a glance: the link that the user just copied, downloads that still run, failed builds on GitHub. Keeps
/// its own time of 8 seconds, and passes over the turns at which nothing can have changed; while GitHub fails, it is asked less
/// and less often, down to every five minutes. Shows no failure: what can't be read isn't shown. Lives on the UI thread, never
/// blocks it.
class GlanceSource : public QObject {
    Q_OBJECT
    Q_PROPERTY(int failedBuilds READ failedBuilds NOTIFY changed FINAL)
    Q_PROPERTY(int activeTransfers READ activeTransfers NOTIFY changed FINAL)
    /// The video that the preview shows; empty if none.
    Q_PROPERTY(QUrl playingVideo READ playingVideoUrl NOTIFY changed FINAL)
    Q_PROPERTY(bool hasVideo READ hasVideo NOTIFY changed FINAL)
public:
    /// What the source uses; all of it outlives the source.
    struct Needs {
        Clock &clock;
        Background &background;
        ToolRunner &tools;
        const FileTree &fileTree;
        Clipboard &clipboard;
        Http &http;
        const Prefs &prefs;
        QString downloads; ///< the user's Downloads folder
        QUrl oEmbed = QUrl(QStringLiteral("https://www.youtube.com/oembed")); ///< YouTube's, https://oembed.com/#section7
    };
    explicit GlanceSource(Needs needs, QObject *parent = nullptr);
    ~GlanceSource() override;

    const std::optional<ClipboardPreview> &clipboard() const { return m_clipboard; }
    /// Failed workflow runs, at most 10.
    int failedBuilds() const { return m_failedBuilds; }
    /// Unfinished downloads.
    int activeTransfers() const { return m_transfers.count; }
    const std::optional<QUrl> &playingVideo() const { return m_playingVideo; }
    QUrl playingVideoUrl() const { return m_playingVideo.value_or(QUrl()); }
    bool hasVideo() const { return m_playingVideo.has_value(); }
    /// The user's Downloads folder.
    const QString &downloads() const { return m_needs.downloads; }

    /// Looks at everything again, GitHub too; returns at once.
    Q_INVOKABLE void refresh();
    /// Has the preview show a video.
    void setPlayingVideo(const QUrl &url);
    /// The preview was closed.
    Q_INVOKABLE void closeVideo();

Q_SIGNALS:
    void changed();

private:
    void look();
    void settle();
    void waitFor(std::chrono::milliseconds least);
    void wakeByDownloads();
    void readDownloads();
    void readBuilds();
    void refreshClipboard();
    void show(const std::optional<ClipboardPreview> &preview);
    QCoro::Task<> loadYouTube(QUrl url);

    Needs m_needs;
    std::optional<ClipboardPreview> m_clipboard;
    int m_pasteboardChange = -1; ///< the clipboard's count at the last look; no count is negative
    Transfers m_transfers;
    int m_failedBuilds = 0;
    bool m_listing = false; ///< under way in the background
    bool m_asking = false; ///< likewise
    std::chrono::seconds m_break{8}; ///< until GitHub is asked again, should it fail
    Instant m_nextBuilds; ///< not before this
    Instant m_nextListing; ///< likewise, unless the folder has changed
    std::optional<QUrl> m_playingVideo;
    Instant m_start; ///< the turns are counted from here
    TimerHandle m_turn;
    std::unique_ptr<QSocketNotifier> m_downloadsChange; ///< while nothing has changed there
};

} // namespace velto
