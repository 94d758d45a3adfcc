import QtQuick
import Velto.Settings

SettingsPane {
    id: root

    required property SettingsStore store
    readonly property GeneralSettings general: root.store.general

    Component.onCompleted: root.general.reread()
    onReturned: root.general.reread()

    FormSection {
        title: qsTr("Mode")

        FormRow {
            title: qsTr("Starting view")
            note: root.general.modeLine

            Choice {
                label: qsTr("Starting view")
                options: root.general.modes
                current: root.general.mode
                onPicked: value => root.general.mode = value
            }
        }
    }
    FormSection {
        title: qsTr("Opening")

        FormRow {
            title: qsTr("Open Velto on")

            Choice {
                label: qsTr("Open Velto on")
                options: root.general.openModes
                current: root.general.openMode
                onPicked: value => root.general.openMode = value
            }
        }
        FormRow {
            title: qsTr("Shortcut")
            note: root.general.shortcutText

            FormButton {
                visible: root.general.shortcutDeclined
                text: qsTr("Ask Again…")
                onClicked: root.general.askForShortcut()
            }
        }
    }
    FormSection {
        title: qsTr("Recording")

        FormRow {
            title: qsTr("Stay quiet while I record my screen")
            note: qsTr("When OBS, Screen Studio, ScreenFlow, Loom, Riverside, Ecamm or Descript is open, the velto shows only a red dot and nothing slides out, so client names never end up in a video.")

            Toggle {
                label: qsTr("Stay quiet while I record my screen")
                on: root.general.quietWhileRecording
                onWanted: on => root.general.quietWhileRecording = on
            }
        }
    }
    FormSection {
        title: qsTr("Startup")

        FormRow {
            title: qsTr("Open Velto when you log in")
            note: root.general.loginProblem
            noteTone: FormText.Warning

            Toggle {
                label: qsTr("Open Velto when you log in")
                on: root.general.login
                onWanted: on => root.general.login = on
            }
        }
    }
    FormSection {
        title: qsTr("Agents")

        FormRow {
            visible: root.general.terminals.length > 0
            title: qsTr("Resume sessions in")

            Choice {
                label: qsTr("Resume sessions in")
                options: root.general.terminals
                current: root.general.terminal
                onPicked: value => root.general.terminal = value
            }
        }
        FormRow {
            title: qsTr("Show a Peek when an agent finishes")
            note: qsTr("At most one per session every 3 minutes, and never while your terminal or editor is in front.")

            Toggle {
                label: qsTr("Show a Peek when an agent finishes")
                on: root.general.peekOnFinish
                onWanted: on => root.general.peekOnFinish = on
            }
        }
        FormRow {
            title: qsTr("Daily Claude token budget")
            note: qsTr("0 = off")

            Field {
                width: Math.max(130, least)
                label: qsTr("Daily Claude token budget")
                stored: root.general.dailyBudget
                horizontalAlignment: TextInput.AlignRight
                inputMethodHints: Qt.ImhDigitsOnly
                validator: RegularExpressionValidator {
                    regularExpression: /\d{0,15}/
                }
                onTyped: text => root.general.dailyBudget = text
            }
        }
    }
    FormSection {
        title: qsTr("Daily priority")
        footer: qsTr("Shown as a quiet pinned highlight on Home. Stored only in Velto.")

        FormRow {
            id: priority

            Field {
                width: priority.width - 24
                label: qsTr("What matters most today?")
                placeholderText: qsTr("What matters most today?")
                stored: root.general.dailyPriority
                onTyped: text => root.general.dailyPriority = text
            }
        }
    }
}
