import QtQuick
import Velto.Design

/// The quiet line in place of an empty list, with at most one thing to do about it.
Row {
    id: root

    required property string symbol
    required property string text
    property string action

    signal clicked

    spacing: Math.round(6 * Theme.textScale)
    Accessible.role: Accessible.StaticText
    Accessible.name: root.text

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbol
        size: Theme.textBody
        color: Theme.glassTertiary
    }
    PlainText {
        anchors.verticalCenter: parent.verticalCenter
        words: root.text
        color: Theme.glassSecondary
    }
    Item {
        width: 4
        height: 1
        visible: button.visible
    }
    PillButton {
        id: button

        anchors.verticalCenter: parent.verticalCenter
        visible: root.action !== ""
        text: root.action
        onClicked: root.clicked()
    }
}
