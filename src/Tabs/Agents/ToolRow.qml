import QtQuick
import Velto.Design

// Another AI tool that runs on this machine.
Item {
    id: root

    required property string toolName
    required property string symbol
    required property string countText
    required property string since
    required property string note

    readonly property string facts: root.note === "" ? root.since : root.since + " · " + root.note

    implicitHeight: 32 * Theme.textScale
    Accessible.role: Accessible.ListItem
    Accessible.name: Plain.line(root.countText === "" ? root.toolName + ", " + root.facts
                                           : root.toolName + ", " + root.countText + ", " + root.facts)

    Symbol {
        id: symbol

        x: 14
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbol
        color: Theme.glassSecondary
    }
    PlainText {
        id: name

        x: 24 + 16 * Theme.textScale
        anchors.verticalCenter: parent.verticalCenter
        words: root.toolName
        size: Theme.textTitle
        weight: Font.Medium
        Accessible.ignored: true
    }
    PlainText {
        id: count

        anchors.left: name.right
        anchors.leftMargin: visible ? 6 : 0
        anchors.baseline: name.baseline
        visible: root.countText !== ""
        words: root.countText
        size: Theme.textSmall
        weight: Font.DemiBold
        color: Theme.ice
        Accessible.ignored: true
    }
    PlainText {
        anchors.left: count.visible ? count.right : name.right
        anchors.leftMargin: 10
        anchors.right: parent.right
        anchors.rightMargin: Theme.paddingCard
        anchors.baseline: name.baseline
        words: root.facts
        size: Theme.textSmall
        color: Theme.glassTertiary
        Accessible.ignored: true
    }
}
