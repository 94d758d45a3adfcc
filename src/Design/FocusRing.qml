import QtQuick
import Velto.Design

/// The ring around the control that has the keyboard focus. Put it into the control; it follows its parent's edges.
Rectangle {
    id: root

    /// The control's own corner radius.
    property real corner: Theme.radiusControl

    anchors.fill: parent
    anchors.margins: -2
    radius: root.corner + 2
    color: "transparent"
    border.width: 2
    border.color: Theme.ice
    visible: parent !== null && parent.activeFocus
}
