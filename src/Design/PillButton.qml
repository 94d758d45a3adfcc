import QtQuick
import Velto.Design

/// A small capsule button with a text.
ButtonBase {
    id: root

    required property string text
    property color tint: Theme.ice
    /// The one that Return presses wherever one is in its form.
    property bool primary: false

    label: root.text
    corner: root.height / 2
    implicitWidth: title.implicitWidth + 22
    implicitHeight: title.implicitHeight + 8

    PillButtonStyle {
        anchors.fill: parent
        tint: root.tint
        hovered: root.hovered
        pressed: root.pressed
        primary: root.primary
    }

    PlainText {
        id: title

        x: 11
        y: 4
        width: root.width - 22
        words: root.text
        size: Theme.textSmall
        weight: root.primary ? Font.DemiBold : Font.Medium
        color: root.primary ? Theme.sheet : Theme.glassPrimary
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
}
