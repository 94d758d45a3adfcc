import QtQuick
import QtQuick.Controls.Fusion
import QtQuick.Templates as T
import Velto.Settings

SettingsPane {
    id: root

    required property SettingsStore store

    FormSection {
        title: "Velto"
        footer: qsTr("Velto keeps your data on this Mac. It only talks to the work tools you connect (each to its own API). No analytics, no tracking.")

        FormRow {
            title: qsTr("Version")

            FormText {
                text: root.store.about.version
                quiet: true
            }
        }
    }
    FormSection {
        title: qsTr("Uninstall")

        FormRow {
            note: qsTr("Removes the Claude Code hooks, the login item, work-tool tokens and all settings. Then drag Velto to the Trash.")
        }
        FormRow {
            FormButton {
                text: qsTr("Remove Velto's changes and quit…")
                destructive: true
                onClicked: confirm.open()
            }
        }
    }

    Dialog {
        id: confirm

        parent: T.Overlay.overlay
        anchors.centerIn: parent
        width: Math.min(420, (parent?.width ?? 420) - 40)
        modal: true
        title: qsTr("Remove everything Velto added to this Mac?")
        onAccepted: root.store.about.reset()

        contentItem: FormText {
            text: qsTr("This removes the Claude Code hooks, the login item, the tokens and all settings. Then drag Velto to the Trash.")
        }
        footer: DialogFooter {
            FormButton {
                text: qsTr("Cancel")
                focus: true
                onClicked: confirm.reject()
            }
            FormButton {
                text: qsTr("Remove and Quit")
                destructive: true
                onClicked: confirm.accept()
            }
        }
    }
}
