pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Fusion
import Velto.Design
import Velto.Settings

/// Velto's settings: a row of panes. Every change is saved at once.
ApplicationWindow {
    id: root

    required property SettingsStore store

    readonly property list<QtObject> panes: [
        PaneInfo {
            title: qsTr("General")
            symbol: "gearshape"
            file: "GeneralPane.qml"
        },
        PaneInfo {
            title: qsTr("Modules")
            symbol: "square.grid.2x2"
            file: "ModulesPane.qml"
        },
        PaneInfo {
            title: qsTr("Claude Code")
            symbol: "sparkle"
            file: "ClaudePane.qml"
        },
        PaneInfo {
            title: qsTr("Work tools")
            symbol: "briefcase"
            file: "WorkPane.qml"
        },
        PaneInfo {
            title: qsTr("Quillbox")
            symbol: "brain"
            file: "QuillboxPane.qml"
        },
        PaneInfo {
            title: qsTr("About")
            symbol: "info.circle"
            file: "AboutPane.qml"
        }
    ]
    property int shown: 0
    /// What gets the focus when it opens.
    readonly property Item first: names.count > root.shown ? names.itemAt(root.shown) : null

    width: Math.max(560, root.minimumWidth)
    height: 520
    // The user's font may be large. A multiple of eight is even in device pixels at 125, 150 and 175 %: a window
    // manager may grant no other.
    minimumWidth: 8 * Math.ceil((tabs.width + 32) / 8)
    minimumHeight: 360
    title: qsTr("Velto Settings")

    function show(index: int): void {
        root.shown = index;
        content.setSource(root.panes[index].file, {
            "store": root.store
        });
    }
    /// Chosen by keys, so the focus moves along: the focused control may be gone with its pane.
    function step(by: int): void {
        root.show((root.shown + root.panes.length + by) % root.panes.length);
        root.first.forceActiveFocus(Qt.TabFocusReason);
    }
    Component.onCompleted: root.show(0)

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: root.close()
    }
    Shortcut {
        sequences: ["Ctrl+Tab", "Ctrl+PgDown"]
        onActivated: root.step(1)
    }
    Shortcut {
        sequences: ["Ctrl+Shift+Tab", "Ctrl+PgUp"]
        onActivated: root.step(-1)
    }

    header: Rectangle {
        implicitHeight: tabs.height + 13
        color: root.palette.window

        Row {
            id: tabs

            anchors.horizontalCenter: parent.horizontalCenter
            y: 6
            spacing: 4
            Accessible.role: Accessible.PageTabList
            Accessible.name: qsTr("Sections")

            Repeater {
                id: names

                model: root.panes.length

                PaneButton {
                    required property int index

                    info: root.panes[index]
                    selected: root.shown === index
                    onClicked: root.show(index)
                    Keys.onLeftPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
                    Keys.onRightPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
                }
            }
        }
        Separator {
            anchors.bottom: parent.bottom
            width: parent.width
            ink: Qt.alpha(root.palette.windowText, 0.14)
        }
    }

    footer: Rectangle {
        visible: root.store.unsaved !== ""
        implicitHeight: Math.max(reason.implicitHeight, again.implicitHeight) + 20
        color: root.palette.window

        Separator {
            width: parent.width
            ink: Qt.alpha(root.palette.windowText, 0.14)
        }
        FormText {
            id: reason

            anchors.verticalCenter: parent.verticalCenter
            x: 24
            width: again.x - x - 12
            text: root.store.unsaved
            tone: FormText.Warning
            Accessible.role: Accessible.Notification
        }
        FormButton {
            id: again

            anchors.right: parent.right
            anchors.rightMargin: 24
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Try again")
            onClicked: root.store.saveAgain()
        }
    }

    Loader {
        id: content

        anchors.fill: parent
    }
}
