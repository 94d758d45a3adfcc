#pragma once

#include "Core/RowModel.h"
#include "Core/VeltoSource.h"
#include "Platform/Timer.h"
#include "Tabs/Home/BriefPage.h"
#include "Tabs/Home/HomeSpotlight.h"

#include <QUrl>
#include <optional>

namespace velto {

class Clock;
class FileWriter;
class TerminalApp;
class VideoPlayer;

/// The brief: what needs the user now, out of everything that the other stores know. It has no data of its own. The list is
/// built at most once for each change of those stores, when somebody asks. UI thread only.
class HomeSource : public VeltoSource {
    Q_OBJECT
    Q_MOC_INCLUDE("Platform/VideoPlayer.h")
    Q_PROPERTY(QString greeting READ greeting NOTIFY changed FINAL)
    Q_PROPERTY(QString headlineText READ headlineText NOTIFY changed FINAL)
    Q_PROPERTY(Tone headlineTone READ headlineTone NOTIFY changed FINAL)
    Q_PROPERTY(velto::HomeSpotlight *spotlight READ spotlight CONSTANT FINAL)
    /// itemId, symbol, tone, title, detail, from, actionLabel
    Q_PROPERTY(QAbstractItemModel *needs READ needs CONSTANT FINAL)
    Q_PROPERTY(QAbstractItemModel *next READ next CONSTANT FINAL)
    Q_PROPERTY(QAbstractItemModel *today READ today CONSTANT FINAL)
    /// Which subjects aren't set up yet, as one line; empty if all are.
    Q_PROPERTY(QString setupText READ setupText NOTIFY changed FINAL)
    Q_PROPERTY(bool guideShown READ guideShown NOTIFY changed FINAL)
    /// A video should be played in the panel; what the player should show, and where it comes from.
    Q_PROPERTY(bool videoShown READ videoShown NOTIFY changed FINAL)
    Q_PROPERTY(QString videoHtml READ videoHtml NOTIFY changed FINAL)
    Q_PROPERTY(QUrl videoBase READ videoBase NOTIFY changed FINAL)
    Q_PROPERTY(velto::VideoPlayer *videoPlayer READ videoPlayer CONSTANT FINAL)
    /// The outcome of a press where it isn't obvious; empty again after a while.
    Q_PROPERTY(QString noticeText READ noticeText NOTIFY changed FINAL)
public:
    enum Tone : int { Bad, Warn, Info, Off }; // as HomeItem::Tone, by the names that views use
    Q_ENUM(Tone)

    /// All of it outlives the source.
    struct Needs {
        HomeStores stores;
        const TerminalApp &terminal;
        Workspace &workspace;
        VideoPlayer &videoPlayer;
        FileWriter &writer;
        const Places &places;
        Clock &clock;
    };
    explicit HomeSource(const Needs &needs, QObject *parent = nullptr);
    ~HomeSource() override;

    QString title() const override;
    QString symbol() const override;
    int badge() const override;
    QUrl makeView() const override;

    /// The current ranked list.
    const QList<HomeItem> &items() const;
    QString greeting() const;
    QString headlineText() const;
    Tone headlineTone() const;

    HomeSpotlight *spotlight() { return &m_spotlight; }
    QAbstractItemModel *needs() { return &m_needsRows; }
    QAbstractItemModel *next() { return &m_nextRows; }
    QAbstractItemModel *today() { return &m_todayRows; }
    QString setupText() const { return m_setupText; }
    bool guideShown() const;
    bool videoShown() const { return m_published.video.has_value(); }
    QString videoHtml() const;
    QUrl videoBase() const;
    VideoPlayer *videoPlayer() const;
    const QString &noticeText() const { return m_notice; }

    /// Does what the button of a row does.
    Q_INVOKABLE void run(const QString &itemId);
    Q_INVOKABLE void openConnect();
    /// Looks at the clipboard at once, then leads to its row or says that there is none.
    Q_INVOKABLE void useCopiedLink();
    Q_INVOKABLE void dismissGuide();
    Q_INVOKABLE void openVideoInBrowser();
    Q_INVOKABLE void closeVideo();
    /// In the panel, or in the browser if the player isn't installed.
    void playVideo(const QUrl &url);

    void worldChanged() override;

Q_SIGNALS:
    /// The user asked for what this row shows.
    void rowWanted(const QString &itemId);

private:
    /// What views see besides the rows, kept to detect whether anything has changed.
    struct Published {
        QList<HomeItem> items;
        QString greeting;
        QString setupText;
        bool guideShown = false;
        std::optional<QUrl> video;
        QString notice;
        bool operator==(const Published &) const = default;
    };
    void publish();
    void arrange();
    void notice(const QString &text);

    Needs m_needs;
    BriefWays m_ways;
    mutable QList<HomeItem> m_items;
    mutable bool m_stale = true;
    Published m_published;
    QString m_setupText;
    QString m_notice;
    HomeSpotlight m_spotlight;
    RowModel m_needsRows;
    RowModel m_nextRows;
    RowModel m_todayRows;
    TimerHandle m_noticeEnd;
    TimerHandle m_linkRead;
};

} // namespace velto
