import QtQuick
import Velto.Design

// A live session, or something that was heard.
Item {
    id: root

    required property int index
    required property string symbol
    required property bool heard
    required property string name
    required property string age
    required property string spoken

    implicitHeight: 28 * Theme.textScale
    activeFocusOnTab: true
    Accessible.role: Accessible.ListItem
    Accessible.name: Plain.line(root.spoken)
    Accessible.focusable: true

    // Inside the row: the page clips what extends beyond its sides.
    FocusRing {
        anchors.margins: 0
        corner: Theme.radiusRow - 2
    }
    Item {
        id: mark

        x: 8
        width: 18 * Theme.textScale
        height: parent.height

        Symbol {
            anchors.centerIn: parent
            name: root.symbol
            color: root.heard ? Theme.orange : Theme.cyan
        }
    }
    PlainText {
        anchors.left: mark.right
        anchors.leftMargin: Theme.gap
        anchors.right: age.left
        anchors.rightMargin: Theme.gapSection
        anchors.verticalCenter: parent.verticalCenter
        words: root.name
        Accessible.ignored: true
    }
    Digits {
        id: age

        anchors.right: parent.right
        anchors.rightMargin: Theme.paddingCard
        anchors.verticalCenter: parent.verticalCenter
        value: root.age
        weight: Font.Normal
        color: Theme.glassTertiary
        Accessible.ignored: true
    }
}
