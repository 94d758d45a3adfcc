import QtQuick
import Velto.Design

/// The background of a button or a picker.
RoundedBox {
    id: root

    required property var control
    property bool filled: false
    property bool flat: false
    readonly property bool down: root.control.down
    readonly property bool hovered: root.control.hovered

    radius: 8
    color: root.filled ? Qt.darker(root.palette.active.highlight, root.down ? 1.15 : root.hovered ? 1.06 : 1)
                       : Qt.alpha(root.palette.active.windowText, root.down ? 0.16 : root.hovered ? 0.11 : root.flat ? 0 : 0.07)
    edge: root.flat || root.filled ? 0 : 1
    edgeColor: Qt.alpha(root.palette.active.windowText, 0.14)

    RoundedBox {
        anchors.fill: parent
        // Keeps the ring apart from a fill of the same colour.
        anchors.margins: root.filled ? -4 : -2
        visible: root.control.visualFocus
        radius: root.radius - anchors.margins
        edge: 2
        edgeColor: root.palette.active.highlight
    }
}
