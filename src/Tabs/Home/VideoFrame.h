#pragma once

#include "Platform/VideoPlayer.h"

#include <QPointer>
#include <QQuickItem>

namespace velto {

/// The place of a video in a view: the player covers it while it is on show.
class VideoFrame : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velto::VideoPlayer *player MEMBER m_player NOTIFY changed REQUIRED FINAL)
    Q_PROPERTY(QString html MEMBER m_html NOTIFY changed REQUIRED FINAL)
    Q_PROPERTY(QUrl base MEMBER m_base NOTIFY changed REQUIRED FINAL)
    /// The player gave up.
    Q_PROPERTY(bool failed READ failed NOTIFY failedChanged FINAL)
public:
    explicit VideoFrame(QQuickItem *parent = nullptr);
    ~VideoFrame() override;

    bool failed() const { return m_failed; }

Q_SIGNALS:
    void changed();
    void failedChanged();
    /// The user pressed Escape in the video.
    void closeWanted();

protected:
    void componentComplete() override;

private:
    void follow();
    QRect place() const;

    QPointer<VideoPlayer> m_player;
    QString m_html;
    QUrl m_base;
    bool m_opened = false;
    bool m_failed = false;
};

} // namespace velto
