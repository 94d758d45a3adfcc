import QtQuick
import Velto.Design

/// A line between what is above and below it, equally thin wherever it is.
RoundedBox {
    id: root

    required property color ink
    readonly property real density: Math.max(1, Screen.devicePixelRatio)

    height: Math.floor(root.density) / root.density
    color: Qt.alpha(root.ink, Math.max(root.ink.a, Theme.edgeFloor))
}
