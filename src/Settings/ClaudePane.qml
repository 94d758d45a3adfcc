import QtQuick
import Velto.Settings

SettingsPane {
    id: root

    required property SettingsStore store
    readonly property ClaudeSettings claude: root.store.claude

    Component.onCompleted: root.claude.reread()
    onReturned: root.claude.reread()

    function agree(): void {
        root.claude.prepare();
        preview.open();
    }

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
                visible: !root.claude.heard
                text: qsTr("Try again")
                onClicked: root.claude.tryAgain()
            }
            FormButton {
                text: root.claude.connected ? qsTr("Disconnect") : qsTr("Connect…")
                enabled: root.claude.connected || root.claude.canConnect
                onClicked: root.claude.connected ? root.claude.disconnectHooks() : root.agree()
            }
        }
    }

    HooksDialog {
        id: preview

        text: visible ? root.claude.previewText : ""
        onAccepted: root.claude.connectHooks()
    }
}
