import QtQuick
import Velto.Design

/// The circle that takes a todo off the list; its tick shows when it is about to be pressed.
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
