import QtQuick
import Velto.Settings

/// The words of a check box: what it is about, and a note behind it.
Item {
    id: root

    required property real indent
    required property string label
    required property string note

    implicitHeight: Math.max(words.implicitHeight, root.note === "" ? 0 : behind.implicitHeight) + 2

    FormText {
        id: words

        x: root.indent
        width: Math.min(implicitWidth, root.width - root.indent)
        anchors.verticalCenter: parent.verticalCenter
        text: root.label
        Accessible.ignored: true
    }
    FormText {
        id: behind

        anchors.left: words.right
        anchors.leftMargin: 10
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        visible: root.note !== ""
        text: root.note
        quiet: true
        Accessible.ignored: true
    }
}
