import QtQuick
import Velto.Settings

/// One secret: paste it, save it, remove it. What is stored is never shown. A button that has done its work disappears, and the
/// focus goes to the field.
FormRow {
    id: root

    required property TokenSettings tokens
    required property string name
    required property string label
    /// From the field's left edge to the end of its button: the width of a field without one.
    readonly property real extent: field.width + 8 + keep.width
    readonly property bool saved: root.tokens.revision >= 0 && root.tokens.isSaved(root.name)

    function save(): void {
        root.tokens.save(root.name, field.text);
        field.forceActiveFocus();
    }

    title: root.label
    note: root.tokens.revision >= 0 ? root.tokens.problem(root.name) : ""
    noteTone: FormText.Warning

    Field {
        id: field

        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(field.least, 232 - keep.width)
        echoMode: TextInput.Password
        inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText
        placeholderText: root.saved ? qsTr("Saved") : qsTr("Paste here")
        label: root.label
        Accessible.passwordEdit: true
        stored: root.tokens.revision >= 0 ? root.tokens.typed(root.name) : ""
        onTyped: text => root.tokens.type(root.name, text)
        onAccepted: root.save()
    }
    FormButton {
        anchors.verticalCenter: parent.verticalCenter
        visible: root.saved
        text: qsTr("Remove")
        Accessible.name: qsTr("Remove %1").arg(root.label)
        onClicked: {
            root.tokens.remove(root.name);
            field.forceActiveFocus();
        }
    }
    FormButton {
        id: keep

        anchors.verticalCenter: parent.verticalCenter
        enabled: field.text.trim() !== ""
        text: qsTr("Save")
        Accessible.name: qsTr("Save %1").arg(root.label)
        onClicked: root.save()
    }
}
