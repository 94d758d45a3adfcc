pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Fusion
import Velto.Settings

/// The first start: what Velto is, what it shows, what it is allowed to do.
ApplicationWindow {
    id: root

    required property Welcome store
    /// What gets the focus when it opens.
    readonly property Item first: start

    width: 520
    // A multiple of eight, see SettingsWindow.
    height: 8 * Math.ceil(Math.min(page.contentHeight + footer.height, Screen.desktopAvailableHeight - 80) / 8)
    minimumWidth: 440
    minimumHeight: 360
    title: qsTr("Welcome to Velto")

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: root.close()
    }

    // Always in sight, however low the screen is.
    footer: Rectangle {
        implicitHeight: start.height + 32
        color: root.palette.window

        FormText {
            x: page.margin
            anchors.verticalCenter: parent.verticalCenter
            width: start.x - x - 12
            quiet: true
            text: qsTr("You can change all of this later in Settings.")
        }
        FormButton {
            id: start

            anchors.right: parent.right
            anchors.rightMargin: page.margin
            anchors.verticalCenter: parent.verticalCenter
            focus: true
            highlighted: true
            text: qsTr("Start using Velto")
            onClicked: root.store.finish()
        }
    }

    SettingsPane {
        id: page

        anchors.fill: parent
        margin: 28
        gap: 16
        foot: 20
        // Presses the default button, unless the focused control takes the key.
        Keys.onReturnPressed: root.store.finish()
        Keys.onEnterPressed: root.store.finish()

        Column {
            width: parent.width
            spacing: 8

            FormHeading {
                text: qsTr("Your velto, working for you")
                font.pointSize: 2 * root.font.pointSize
            }
            FormText {
                width: parent.width
                text: qsTr("Velto lives around the camera. It shows what needs you — agents waiting, your next meeting — and slides out a one-line alert when something changes.")
            }
        }
        Column {
            width: parent.width
            spacing: 8

            Hint {
                symbol: "cursorarrow"
                text: qsTr("Rest the pointer on the velto to open it")
            }
            Hint {
                symbol: "keyboard"
                text: root.store.keyHint
            }
            Hint {
                symbol: "menubar.rectangle"
                text: qsTr("Settings live in the menu bar icon")
            }
        }
        FormSection {
            title: qsTr("Start with a mode")

            FormRow {
                title: qsTr("Mode")
                note: root.store.modeLine

                Choice {
                    label: qsTr("Mode")
                    options: root.store.modes
                    current: root.store.mode
                    onPicked: value => root.store.mode = value
                }
            }
        }
        FormSection {
            title: qsTr("Show")

            Repeater {
                model: root.store.modules

                Tick {
                    required property string module
                    required property bool on
                    required label
                    required note

                    width: parent?.width ?? 0
                    ticked: on
                    onWanted: on => root.store.set(module, on)
                }
            }
        }
        FormSection {
            title: qsTr("Allow")

            Tick {
                width: parent?.width ?? 0
                label: qsTr("Open Velto when I log in")
                ticked: root.store.login
                onWanted: on => root.store.login = on
            }
            Tick {
                width: parent?.width ?? 0
                visible: root.store.offersHooks
                label: qsTr("Tell me the moment a Claude agent finishes or needs me")
                ticked: root.store.hooks
                link: qsTr("What changes?")
                onWanted: on => root.store.hooks = on
                onFollowed: preview.open()
            }
        }
        FormSection {
            title: qsTr("Try it")

            FormRow {
                title: qsTr("A session wants to run a command")
                note: qsTr("The question slides out at the top of your screen. A stand-in asks, so nothing is run.")

                FormButton {
                    text: qsTr("See a question")
                    onClicked: root.store.seeQuestion()
                }
            }
        }
    }

    HooksDialog {
        id: preview

        asking: false
        text: visible ? root.store.preview() : ""
    }
}
