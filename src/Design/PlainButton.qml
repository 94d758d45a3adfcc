import QtQuick
import Velto.Design

/// A quiet button: a text and a symbol without a background, for what is rarely pressed.
ButtonBase {
    id: root

    required property string text
    property string symbol

    readonly property color ink: root.hovered || root.pressed ? Theme.glassPrimary : Theme.glassSecondary

    label: root.text
    corner: 6
    implicitWidth: row.implicitWidth + 12
    implicitHeight: row.implicitHeight + 6

    Row {
        id: row

        x: 6
        y: 3
        spacing: 4

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            size: Theme.textTiny
            color: root.ink
        }
        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            words: root.text
            size: Theme.textSmall
            weight: Font.Medium
            color: root.ink
            Accessible.ignored: true
        }
    }
}
