import QtQuick
import QtQuick.Controls.Fusion
import Velto.Settings

/// A check box over the whole row, with a note behind its label and perhaps a link.
Item {
    id: root

    required property string label
    property string note
    property string link
    required property bool ticked
    readonly property bool first: root.parent?.visibleChildren[0] === root

    signal wanted(bool on)
    signal followed

    implicitHeight: box.implicitHeight + 2

    Rectangle {
        visible: !root.first
        x: 12
        width: parent.width - 12
        height: 1
        color: Qt.alpha(root.palette.windowText, 0.1)
    }
    CheckBox {
        id: box

        x: 6
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, root.width - 12 - (more.visible ? more.width : 0))
        text: root.label.replace(/&/g, "&&")
        checked: root.ticked
        Accessible.name: root.label
        Accessible.description: root.note
        onToggled: {
            const wish = box.checked;
            box.checked = Qt.binding(() => root.ticked);
            root.wanted(wish);
        }
    }
    FormText {
        anchors.left: box.right
        anchors.leftMargin: 4
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        visible: root.note !== ""
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
        text: root.note
        quiet: true
        Accessible.ignored: true
    }
    FormButton {
        id: more

        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        visible: root.link !== ""
        flat: true
        text: root.link
        onClicked: root.followed()
    }
}
