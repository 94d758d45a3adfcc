import QtQuick
import Velto.Design

/// The circle that takes a todo off the list; it shows its tick to whoever is about to press it.
ButtonBase {
    id: root

    readonly property bool ready: root.hovered || root.activeFocus

    corner: root.height / 2
    implicitWidth: Math.round(24 * Theme.textScale)
    implicitHeight: implicitWidth

    Symbol {
        anchors.centerIn: parent
        name: root.ready ? "checkmark.circle" : "circle"
        size: Theme.textLarge
        color: root.ready ? Theme.green : Theme.glassSecondary
    }
}
