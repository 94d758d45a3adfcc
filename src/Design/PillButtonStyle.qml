import QtQuick
import Velto.Design

/// The capsule of a PillButton.
RoundedBox {
    id: root

    required property color tint
    property bool hovered: false
    property bool pressed: false
    property bool primary: false
    readonly property real density: Math.max(1, Screen.devicePixelRatio)

    radius: root.height / 2
    color: root.primary ? Theme.at(root.tint, root.pressed ? 0.7 : root.hovered ? 0.95 : 0.85)
                        : Theme.at(root.tint, root.pressed ? 0.3 : root.hovered ? 0.2 : 0.16)
    // Half a logical pixel, or as near as the screen gets: one device pixel, fainter where that is wider.
    edge: 1 / root.density
    edgeColor: Theme.at(root.tint, 0.48 * Math.min(1, root.density / 2))
}
