import QtQuick
import Velto.Connect
import Velto.Design

// One secret: paste it, save it, remove it. What is stored is never shown. A button that has done its work disappears, and the
// focus goes to the field.
Item {
    id: root

    required property ConnectSource source
    required property string name
    required property string title
    readonly property TokenSettings tokens: root.source.tokens
    readonly property bool saved: root.tokens.revision >= 0 && root.tokens.isSaved(root.name)

    function save(): void {
        root.source.saveToken(root.name, field.text);
        field.input.forceActiveFocus();
    }

    width: parent?.width ?? 0
    implicitHeight: field.implicitHeight + (trouble.visible ? trouble.height + 4 : 0)

    TextInputField {
        id: field

        anchors.left: parent.left
        anchors.right: buttons.left
        anchors.rightMargin: 8
        secure: true
        named: true
        label: root.title
        prompt: root.saved ? qsTr("%1: saved").arg(root.title) : root.title
        text: root.tokens.revision >= 0 ? root.tokens.typed(root.name) : ""
        onEdited: text => root.tokens.type(root.name, text)
        onAccepted: root.save()
    }
    PlainText {
        id: trouble

        anchors.top: field.bottom
        anchors.topMargin: 4
        visible: text !== ""
        text: root.tokens.revision >= 0 ? root.tokens.problem(root.name) : ""
        size: Theme.textSmall
        color: Theme.amber
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Row {
        id: buttons

        anchors.right: parent.right
        anchors.verticalCenter: field.verticalCenter
        spacing: 6

        PillButton {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.saved
            text: qsTr("Remove")
            label: qsTr("Remove %1").arg(root.title)
            tint: "white"
            onClicked: {
                root.tokens.remove(root.name);
                field.input.forceActiveFocus();
            }
        }
        PillButton {
            anchors.verticalCenter: parent.verticalCenter
            available: field.text.trim() !== ""
            text: qsTr("Save")
            label: qsTr("Save %1").arg(root.title)
            onClicked: root.save()
        }
    }
}
