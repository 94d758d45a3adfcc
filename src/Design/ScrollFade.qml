import QtQuick
import Velto.Design

/// Fades out the contents of a scrolled page at its top, so that they don't look cut. Shows nothing while the page is at its
/// top.
PanelFade {
    id: root

    required property Flickable area
    readonly property real above: root.area.contentY - root.area.originY

    // Looked up anew with each scroll, and when something above the page comes or goes.
    function placeOf(_y: real, _height: real): real {
        return root.mapToItem(null, 0, 0).y;
    }

    anchors.top: root.area.top
    anchors.left: root.area.left
    anchors.right: root.area.right
    anchors.leftMargin: -8 // over focus rings too
    anchors.rightMargin: -8
    height: 12
    visible: root.above > 0
    opacity: Math.min(1, root.above / root.height)
    place: root.above > 0 ? root.placeOf(root.area.y, root.area.height) : 0
    whole: root.Window.height
}
