import QtQuick
import Velto.Design

/// The background of a button or a picker.
Rectangle {
    id: root

    required property var control
    property bool filled: false
    property bool flat: false
    readonly property bool down: root.control.down
    readonly property bool hovered: root.control.hovered

    radius: 8
    color: root.filled ? Qt.darker(root.palette.active.highlight, root.down ? 1.15 : root.hovered ? 1.06 : 1)
                       : Qt.alpha(root.palette.active.windowText, root.down ? 0.16 : root.hovered ? 0.11 : root.flat ? 0 : 0.07)
    border.width: root.flat || root.filled ? 0 : 1
    border.color: Qt.alpha(root.palette.active.windowText, Math.max(0.14, Theme.edgeFloor))

    Rectangle {
        anchors.fill: parent
        // Keeps the ring apart from a fill of the same colour.
        anchors.margins: root.filled ? -4 : -2
        visible: root.control.visualFocus
        radius: root.radius - anchors.margins
        color: "transparent"
        border.width: 2
        border.color: root.palette.active.highlight
    }
}
