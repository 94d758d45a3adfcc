import QtQuick
import Velto.Design

/// A Chip that leads somewhere.
ButtonBase {
    id: root

    required property string text
    property string symbol
    property color tint: Theme.ice

    label: root.text
    corner: root.height / 2
    implicitWidth: chip.implicitWidth
    implicitHeight: chip.implicitHeight

    Chip {
        id: chip

        anchors.fill: parent
        text: root.text
        symbol: root.symbol
        tint: root.tint
        ink: root.tint // it is on black
        fill: root.pressed ? 0.32 : root.hovered ? 0.24 : 0.16
        Accessible.ignored: true
    }
}
