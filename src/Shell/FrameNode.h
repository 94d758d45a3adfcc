#pragma once

#include <QSGRenderNode>

class QPainter;
class QQuickWindow;

namespace velto {

/// Paints straight into the frame, without a picture of its own in between. Only the software scene graph has a painter.
class FrameNode : public QSGRenderNode {
public:
    explicit FrameNode(QQuickWindow *window)
        : m_window(window)
    {
    }

    RenderingFlags flags() const override { return BoundedRectRendering; }
    StateFlags changedStates() const override { return {}; }

protected:
    /// That of the frame, in logical pixels of the window and unclipped; null outside of a frame.
    QPainter *painter() const;

private:
    QQuickWindow *m_window;
};

} // namespace velto
