import QtQuick
import Velto.Design

/// The ring around the focused control. Put it into the control; it follows its parent's edges.
RoundedBox {
    id: root

    /// The control's own corner radius.
    property real corner: Theme.radiusControl

    anchors.fill: parent
    anchors.margins: -2
    radius: root.corner + 2
    edge: 2
    edgeColor: Theme.ice
    opacity: Theme.keyboardElsewhere ? 0 : 1
    visible: parent !== null && parent.activeFocus
}
