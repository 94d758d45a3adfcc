import QtQuick
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

    FormDialog {
        id: confirm

        first: cancel
        width: Math.min(440, (parent?.width ?? 440) - 40)
        title: qsTr("Remove everything Velto added to this Mac?")
        onAccepted: root.store.about.reset()

        contentItem: FormText {
            text: qsTr("This removes the Claude Code hooks, the login item, the tokens and all settings. Then drag Velto to the Trash.")
        }
        footer: DialogFooter {
            FormButton {
                id: cancel

                text: qsTr("Cancel")
                onClicked: confirm.reject()
            }
            FormButton {
                text: qsTr("Remove and Quit")
                destructive: true
                onClicked: confirm.accept()
            }
        }
    }
    FormDialog {
        id: remains

        first: again
        width: confirm.width
        title: qsTr("Not everything could be removed")
        onAccepted: root.store.about.reset()

        contentItem: Column {
            spacing: 8

            Repeater {
                model: root.store.about.left

                FormText {
                    required property string modelData

                    width: parent?.width ?? 0
                    text: modelData
                }
            }
        }
        footer: DialogFooter {
            FormButton {
                text: qsTr("Quit Anyway")
                destructive: true
                onClicked: root.store.about.quit()
            }
            FormButton {
                id: again

                text: qsTr("Try Again")
                onClicked: remains.accept()
            }
        }
    }
    Connections {
        target: root.store.about

        function onLeftChanged(): void {
            remains.open();
        }
    }
}
