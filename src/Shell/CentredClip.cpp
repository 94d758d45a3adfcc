#include "Shell/CentredClip.h"

namespace velto {

CentredClip::CentredClip(QQuickItem *parent)
    : QQuickItem(parent)
{
    setClip(true);
}

void CentredClip::setRoomWidth(double width)
{
    if (width == m_room.width())
        return;
    m_room.setWidth(width);
    resize();
    Q_EMIT roomWidthChanged();
}

void CentredClip::setRoomHeight(double height)
{
    if (height == m_room.height())
        return;
    m_room.setHeight(height);
    resize();
    Q_EMIT roomHeightChanged();
}

QRectF CentredClip::clipRect() const
{
    const double left = parentItem() ? (parentItem()->width() - m_room.width()) / 2 : 0;
    return {{left, 0}, m_room};
}

void CentredClip::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemParentHasChanged && data.item) {
        connect(data.item, &QQuickItem::widthChanged, this, &CentredClip::resize, Qt::UniqueConnection);
        resize();
    }
}

// The scene graph asks for the rectangle only when the item's size changes; here it may be only the position.
void CentredClip::resize()
{
    m_odd = !m_odd;
    setSize(m_room + QSizeF(0, m_odd ? 1 : 0));
}

} // namespace velto
