import QtQuick
import Velto.Design

/// A small capsule button with a text.
ButtonBase {
    id: root

    required property string text
    property string symbol
    property color tint: Theme.ice
    /// Whether it is its form's default button, which Return presses from anywhere in the form.
    property bool primary: false

    readonly property real side: Math.round(11 * Theme.textScale)
    readonly property real lead: root.symbol === "" ? 0 : mark.width + 4 * Theme.textScale
    readonly property color ink: root.primary ? Theme.sheet : root.hovered ? "white" : Theme.glassPrimary

    label: root.text
    corner: root.height / 2
    implicitWidth: Math.ceil(title.implicitWidth) + 2 * root.side + root.lead
    implicitHeight: title.implicitHeight + Math.round(8 * Theme.textScale)

    PillButtonStyle {
        anchors.fill: parent
        tint: root.tint
        hovered: root.hovered
        pressed: root.pressed
        primary: root.primary
    }

    Symbol {
        id: mark

        x: root.side - 1
        anchors.verticalCenter: parent.verticalCenter
        visible: root.symbol !== ""
        name: root.symbol
        size: Theme.textSmall
        color: root.ink
    }
    PlainText {
        id: title

        x: root.side + root.lead
        anchors.verticalCenter: parent.verticalCenter
        width: root.width - 2 * root.side - root.lead
        words: root.text
        size: Theme.textSmall
        weight: root.primary ? Font.DemiBold : Font.Medium
        color: root.ink
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
}
