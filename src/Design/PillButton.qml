import QtQuick
import Velto.Design

/// A small capsule button with a text.
ButtonBase {
    id: root

    required property string text
    property color tint: Theme.ice

    label: root.text
    corner: root.height / 2
    implicitWidth: title.implicitWidth + 22
    implicitHeight: title.implicitHeight + 8

    PillButtonStyle {
        anchors.fill: parent
        tint: root.tint
        hovered: root.hovered
        pressed: root.pressed
    }

    PlainText {
        id: title

        x: 11
        y: 4
        width: root.width - 22
        words: root.text
        size: Theme.textSmall
        weight: Font.Medium
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
}
