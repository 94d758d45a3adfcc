import QtQuick
import Velto.Design

/// The capsule of a PillButton.
Rectangle {
    id: root

    required property color tint
    property bool hovered: false
    property bool pressed: false

    radius: root.height / 2
    color: Theme.at(root.tint, root.pressed ? 0.3 : root.hovered ? 0.22 : 0.16)
    border.width: 1
    border.color: Theme.at(root.tint, 0.48)
}
