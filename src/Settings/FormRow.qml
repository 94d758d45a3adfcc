import QtQuick
import Velto.Design
import Velto.Settings

/// One line of a section: its label at the left, with a note below, and its control at the right.
Item {
    id: root

    property string symbol
    property string title
    property string note
    property int noteTone: FormText.Plain
    default property alias control: holder.data
    readonly property bool first: root.parent?.visibleChildren[0] === root

    width: parent?.width ?? 0
    implicitHeight: Math.max(words.height, holder.height) + 18

    Separator {
        visible: !root.first
        x: 12
        width: parent.width - 13 // up to the card's edge
        ink: Qt.alpha(root.palette.windowText, 0.1)
    }
    Symbol {
        x: 14
        anchors.verticalCenter: parent.verticalCenter
        visible: root.symbol !== ""
        name: root.symbol
        size: 14 * growth.growth
        color: root.palette.windowText
        opacity: 0.68
    }
    Column {
        id: words

        x: root.symbol === "" ? 12 : 18 + 18 * growth.growth
        anchors.verticalCenter: parent.verticalCenter
        width: root.width - x - 12 - (holder.width > 0 ? holder.width + 12 : 0)
        spacing: 2

        FormText {
            id: growth

            width: parent.width
            visible: root.title !== ""
            text: root.title
        }
        FormText {
            width: parent.width
            visible: root.note !== ""
            text: root.note
            tone: root.noteTone
            quiet: true
        }
    }
    Row {
        id: holder

        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
    }
}
