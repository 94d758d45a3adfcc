import QtQuick
import Velto.Settings

SettingsPane {
    id: root

    required property SettingsStore store
    readonly property ClaudeSettings claude: root.store.claude

    Component.onCompleted: root.claude.reread()
    onReturned: root.claude.reread()

    FormSection {
        title: qsTr("Claude Code")

        FormRow {
            title: qsTr("Installed")

            FormText {
                text: root.claude.installedText
                quiet: true
            }
        }
    }
    FormSection {
        title: qsTr("Live updates")
        footer: root.claude.noteText

        FormRow {
            title: root.claude.stateText
            note: root.claude.errorText
            noteTone: FormText.Warning

            FormButton {
                text: root.claude.connected ? qsTr("Disconnect") : qsTr("Connect…")
                enabled: root.claude.connected || root.claude.canConnect
                onClicked: root.claude.connected ? root.claude.disconnectHooks() : preview.open()
            }
        }
    }

    HooksDialog {
        id: preview

        text: visible ? root.claude.preview() : ""
        onAccepted: root.claude.connectHooks()
    }
}
