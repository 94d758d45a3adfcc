import QtQuick
import Velto.Design

// A session on the user's other machine.
Item {
    id: root

    required property string name
    required property string age
    required property string spoken

    implicitHeight: 32 * Theme.textScale
    Accessible.role: Accessible.ListItem
    Accessible.name: Plain.line(root.spoken)

    Symbol {
        x: 14
        anchors.verticalCenter: parent.verticalCenter
        name: "laptopcomputer"
        color: Theme.glassSecondary
    }
    PlainText {
        id: name

        x: 24 + 16 * Theme.textScale
        width: Math.min(implicitWidth, root.width - x - age.implicitWidth - 24)
        anchors.verticalCenter: parent.verticalCenter
        words: root.name
        size: Theme.textTitle
        weight: Font.Medium
        Accessible.ignored: true
    }
    PlainText {
        id: age

        anchors.left: name.right
        anchors.leftMargin: 10
        anchors.baseline: name.baseline
        text: root.age
        size: Theme.textSmall
        color: Theme.glassTertiary
        Accessible.ignored: true
    }
}
