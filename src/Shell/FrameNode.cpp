#include "Shell/FrameNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRendererInterface>

namespace velto {

QPainter *FrameNode::painter() const
{
    return static_cast<QPainter *>(m_window->rendererInterface()->getResource(m_window, QSGRendererInterface::PainterResource));
}

} // namespace velto
