#include "Tabs/Home/VideoFrame.h"

#include <QQuickWindow>

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
    // The sheet is laid out only when this turn of the event loop ends.
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
            m_player->open(m_html, m_base, quintptr(window()->winId()), place());
        },
        Qt::QueuedConnection);
}

void VideoFrame::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (m_player && window())
        m_player->move(place());
}

QRect VideoFrame::place() const
{
    const double ratio = window()->effectiveDevicePixelRatio();
    const QRectF logical = mapRectToScene(boundingRect());
    return QRectF(logical.topLeft() * ratio, logical.size() * ratio).toAlignedRect();
}

} // namespace velto
