#include "Design/RoundedBox.h"

#include "Design/BoxNode.h"
#include "Design/Theme.h"

#include <QQmlEngine>
#include <QQuickWindow>
#include <algorithm>

namespace velto {

RoundedBox::RoundedBox(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &RoundedBox::changed, this, &QQuickItem::update);
}

void RoundedBox::componentComplete()
{
    QQuickItem::componentComplete();
    m_theme = Theme::of(qmlEngine(this));
    if (m_theme)
        connect(m_theme, &Theme::contrastChanged, this, &QQuickItem::update);
}

QSGNode *RoundedBox::updatePaintNode(QSGNode *before, UpdatePaintNodeData *)
{
    auto *node = static_cast<BoxNode *>(before);
    if (!node)
        node = new BoxNode(window());
    QColor edgeColor = m_edgeColor;
    if (m_theme && edgeColor.alpha() > 0)
        edgeColor.setAlphaF(std::max(edgeColor.alphaF(), float(m_theme->edgeFloor())));
    node->set({size(), m_radius, m_color, m_edge, edgeColor}, window()->effectiveDevicePixelRatio());
    return node;
}

void RoundedBox::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    update();
}

void RoundedBox::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged)
        update();
}

} // namespace velto
