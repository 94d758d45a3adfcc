import QtQuick
import QtQuick.Controls.Fusion
import Velto.Settings

/// One line of a section: what it is about at the left, with a note below it, and its control at the right.
Item {
    id: root

    property string title
    property string note
    default property alias control: holder.data
    readonly property bool first: root.parent?.visibleChildren[0] === root

    width: parent?.width ?? 0
    implicitHeight: Math.max(words.height, holder.height) + 18

    Rectangle {
        visible: !root.first
        x: 12
        width: parent.width - 12
        height: 1
        color: Qt.alpha(root.palette.windowText, 0.1)
    }
    Column {
        id: words

        x: 12
        anchors.verticalCenter: parent.verticalCenter
        width: root.width - 24 - (holder.width > 0 ? holder.width + 12 : 0)
        spacing: 2

        FormText {
            width: parent.width
            visible: root.title !== ""
            text: root.title
        }
        FormText {
            width: parent.width
            visible: root.note !== ""
            text: root.note
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
