#pragma once

#include <QObject>
#include <QRect>
#include <QString>
#include <QUrl>

namespace velto {

/// Plays a page with a video inside one of our windows. It costs nothing until the first video is opened. UI thread only.
class VideoPlayer : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Whether this machine has what it needs.
    virtual bool installed() const = 0;
    /// Shows `html`, as if it came from `base`, over `place` (device pixels within the window whose native handle is
    /// `window`), in place of what was shown before.
    virtual void open(const QString &html, const QUrl &base, quintptr window, const QRect &place) = 0;
    virtual void move(const QRect &place) = 0;
    virtual void close() = 0;

Q_SIGNALS:
    /// It ended by itself, or couldn't start.
    void failed();
    /// The user closed it by a key pressed in the video.
    void closeWanted();
};

} // namespace velto
