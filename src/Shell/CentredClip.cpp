#include "Shell/CentredClip.h"

namespace velto {

CentredClip::CentredClip(QQuickItem *parent)
    : QQuickItem(parent)
{
    setClip(true);
}

QRectF CentredClip::clipRect() const
{
    const double left = parentItem() ? (parentItem()->width() - width()) / 2 : 0;
    return {left, 0, width(), height()};
}

void CentredClip::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemParentHasChanged && data.item)
        connect(data.item, &QQuickItem::widthChanged, this, &CentredClip::parentResized, Qt::UniqueConnection);
}

// The scene graph asks for the rectangle only when the item's own size changes, and when it begins to clip.
void CentredClip::parentResized()
{
    setClip(false);
    setClip(true);
}

} // namespace velto
