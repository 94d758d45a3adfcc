#include "Tabs/Home/VideoFrame.h"

#include <QQuickWindow>
#include <utility>

namespace velto {

VideoFrame::VideoFrame(QQuickItem *parent)
    : QQuickItem(parent)
{
}

VideoFrame::~VideoFrame()
{
    if (m_player)
        m_player->close();
}

void VideoFrame::componentComplete()
{
    QQuickItem::componentComplete();
    // The item isn't in its window before this turn of the event loop ends.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!m_player || !window())
                return;
            connect(m_player, &VideoPlayer::failed, this, [this] {
                m_failed = true;
                Q_EMIT failedChanged();
            });
            connect(m_player, &VideoPlayer::closeWanted, this, &VideoFrame::closeWanted);
            // By then the frame is laid out. Whatever moves the sheet around it moves it too, without a signal.
            connect(window(), &QQuickWindow::afterAnimating, this, &VideoFrame::follow);
            window()->update();
        },
        Qt::QueuedConnection);
}

void VideoFrame::follow()
{
    if (!m_player || !window())
        return;
    if (std::exchange(m_opened, true))
        m_player->move(place());
    else
        m_player->open(m_html, m_base, quintptr(window()->winId()), place());
}

QRect VideoFrame::place() const
{
    const double ratio = window()->effectiveDevicePixelRatio();
    const QRectF logical = mapRectToScene(boundingRect());
    return QRectF(logical.topLeft() * ratio, logical.size() * ratio).toAlignedRect();
}

} // namespace velto
