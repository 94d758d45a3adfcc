import QtQuick
import Velto.Settings

SettingsPane {
    id: root

    required property SettingsStore store
    readonly property QuillboxSettings quillbox: root.store.quillbox

    Component.onCompleted: root.quillbox.reread()
    onReturned: root.quillbox.reread()

    FormSection {
        title: qsTr("Quillbox")
        footer: qsTr("Optional. Quillbox is a personal memory with todos. Connect a Quillbox hub to see and tick off your todos in the velto.")

        FormRow {
            title: qsTr("Status")

            FormText {
                text: root.quillbox.status
                quiet: true
            }
        }
    }
    FormSection {
        FormRow {
            title: qsTr("Hub address")

            Field {
                id: address

                width: Math.max(300, least)
                label: qsTr("Hub address")
                placeholderText: "https://quillbox.example.com"
                inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoPredictiveText
                stored: root.quillbox.url
                onTyped: text => root.quillbox.url = text
                onAccepted: root.quillbox.test()
            }
        }
        FormRow {
            title: qsTr("Access token")

            Field {
                width: Math.max(300, least)
                label: qsTr("Access token")
                placeholderText: root.quillbox.tokenSaved ? qsTr("Saved in Keychain — paste to replace") : qsTr("qb_…")
                echoMode: TextInput.Password
                inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText
                Accessible.passwordEdit: true
                stored: root.quillbox.token
                onTyped: text => root.quillbox.token = text
                onAccepted: root.quillbox.test()
            }
        }
        FormRow {
            note: root.quillbox.result
            noteTone: root.quillbox.succeeded ? FormText.Good : FormText.Warning

            FormButton {
                visible: root.quillbox.canDisconnect
                text: qsTr("Disconnect")
                onClicked: {
                    root.quillbox.disconnectHub();
                    address.forceActiveFocus();
                }
            }
            FormButton {
                enabled: root.quillbox.canTest
                text: (root.quillbox.testing ? qsTr("Testing…") : qsTr("Test & Save")).replace("&", "&&")
                onClicked: root.quillbox.test()
            }
        }
    }
}
