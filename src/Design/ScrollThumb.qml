import QtQuick
import Velto.Design

/// The thin scroll mark beside a scrolling area. It shows while the area moves, and can be dragged.
Item {
    id: root

    required property Flickable area

    readonly property real whole: root.area.contentHeight + root.area.bottomMargin
    readonly property real share: root.whole > 0 ? root.area.height / root.whole : 1
    readonly property real room: root.height - thumb.height
    readonly property real way: Math.max(1, root.whole - root.area.height)

    width: 10
    visible: root.share < 1
    Accessible.ignored: true

    RoundedBox {
        id: thumb

        x: Math.round((parent.width - width) / 2) + 1
        y: Math.max(0, Math.min(root.room, root.room * (root.area.contentY - root.area.originY) / root.way))
        width: 2 + Math.round(2 * Theme.textScale)
        height: Math.max(28 * Theme.textScale, root.height * root.share)
        radius: width / 2
        color: Theme.at("white", drag.active ? 0.5 : hover.hovered || root.area.moving ? 0.34 : 0.16)
    }

    HoverHandler {
        id: hover
    }
    DragHandler {
        id: drag

        property real start: 0

        target: null
        onActiveChanged: {
            if (active)
                start = root.area.contentY;
        }
        onTranslationChanged: {
            const wanted = drag.start + drag.translation.y * root.way / Math.max(1, root.room);
            root.area.contentY = Math.max(root.area.originY, Math.min(root.area.originY + root.way, wanted));
        }
    }
}
