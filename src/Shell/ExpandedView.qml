pragma ComponentBehavior: Bound

import QtQuick
import Velto.Design
import Velto.Shell

// The open panel: tabs and buttons, the highlights, the content of the selected tab.
FocusScope {
    id: root

    required property UI ui
    required property PanelContents contents
    required property PeekLine peekLine

    /// The height that a question takes up under the header; what unfolds of it lies over the page.
    readonly property real asked: question.asks ? question.barHeight + Theme.gapSection : 0

    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: tabs.selectedTab ? qsTr("Velto: %1").arg((tabs.selectedTab as TabButton).title) : qsTr("Velto")

    Item {
        id: header

        x: 24
        y: 10
        width: root.width - 48
        height: Math.round(28 * Theme.textScale)

        SelectionCapsule {
            row: tabs
            target: tabs.selectedTab
        }

        Row {
            id: tabs

            readonly property real room: (recording.visible ? recording.x : buttons.x) - 16
            /// Whether there is no room for the titles.
            readonly property bool crowded: {
                let wanted = 0;
                for (let index = 0; index < repeater.count; ++index)
                    wanted += tabs.spacing + ((repeater.itemAt(index) as TabButton)?.whole ?? 0);
                return wanted > tabs.room;
            }
            readonly property Item selectedTab: repeater.count > 0 ? repeater.itemAt(root.contents.selected) : null

            anchors.verticalCenter: parent.verticalCenter
            spacing: 2
            Accessible.role: Accessible.PageTabList
            Accessible.name: qsTr("Sections")

            Repeater {
                id: repeater

                model: root.contents.tabs

                TabButton {
                    required property int index
                    required property string tab
                    required badge

                    bare: tabs.crowded
                    selected: root.contents.selected === index
                    onClicked: root.contents.open(tab)
                }
            }
        }

        Row {
            id: recording

            anchors.right: buttons.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            visible: root.contents.recording
            spacing: Theme.gapTight

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "record.circle"
                size: 11
                color: Theme.coral
            }
            PlainText {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Recording · quiet")
                size: 11
                color: Theme.glassSecondary
            }
        }

        Row {
            id: buttons

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4

            IconButton {
                symbol: root.ui.pinned ? "pin.fill" : "pin"
                label: root.ui.pinned ? qsTr("Unpin (closes when the pointer leaves)") : qsTr("Pin open")
                on: root.ui.pinned
                onClicked: root.ui.setPinned(!root.ui.pinned)
            }
            IconButton {
                symbol: "arrow.clockwise"
                label: root.contents.refreshLabel
                onClicked: root.contents.refresh()
            }
            IconButton {
                symbol: "gearshape"
                label: qsTr("Settings (⌘,)")
                onClicked: root.ui.askForSettings()
            }
        }
    }

    QuestionBar {
        id: question

        x: 24
        y: header.y + header.height + Theme.gapSection
        z: 1
        width: root.width - 48
        line: root.peekLine
        ui: root.ui

        Connections {
            target: root.ui
            function onQuestionWanted(): void {
                question.forceActiveFocus(Qt.ShortcutFocusReason);
            }
        }
    }

    NoticeBar {
        id: keyboard

        x: 24
        y: header.y + header.height + Theme.gapSection + root.asked
        width: root.width - 48
        visible: root.ui.keyboardKept
        symbol: "exclamationmark.triangle"
        tint: Theme.orange
        text: qsTr("Your desktop hasn't given Velto the keyboard: what you type goes to the window behind. To type here, press a text field or ask again.")
        action: qsTr("Ask again")
        onClicked: root.ui.askForKeyboard()
    }

    Row {
        id: highlights

        x: 24
        y: header.y + header.height + Theme.gapSection + root.asked + (keyboard.visible ? keyboard.height + Theme.gap : 0)
        height: Math.round(24 * Theme.textScale)
        spacing: Math.round(6 * Theme.textScale)

        Repeater {
            id: chips

            model: root.contents.highlights

            ChipButton {
                required property string tab
                required symbol

                y: (highlights.height - height) / 2 // a chip on its way out has no parent to be centred in
                onClicked: root.contents.open(tab)
            }
        }
        Chip {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.contents.nothingNeedsYou
            symbol: "checkmark.circle"
            text: qsTr("Nothing needs you right now")
        }
    }

    Item {
        id: content

        /// The store whose page was shown last. If the tabs around it change, its page stays as it is.
        property VeltoSource store: null
        // Room beside the page for focus rings and the scroll mark.
        readonly property int side: 8

        x: 24 - side
        y: highlights.y + (root.contents.nothingNeedsYou || chips.count > 0 ? highlights.height + Theme.gapSection : 0)
        width: root.width - 2 * x
        height: root.height - y - 22
        clip: true

        Repeater {
            model: root.contents.tabs

            // A tab that was visited keeps its view, and with it the scroll position.
            Loader {
                id: page

                required property int index
                required property url view
                required property VeltoSource store
                readonly property bool shown: root.contents.selected === index

                anchors.fill: parent
                anchors.leftMargin: content.side
                anchors.rightMargin: content.side
                visible: shown
                onShownChanged: {
                    show();
                    if (!page.shown || content.store === page.store)
                        return;
                    content.store = page.store;
                    coming.restart();
                }
                Component.onCompleted: show()

                NumberAnimation {
                    id: coming

                    target: page
                    property: "opacity"
                    from: Theme.fadeDuration > 0 ? 0 : 1
                    to: 1
                    duration: Theme.fadeDuration
                }

                function show(): void {
                    if (page.shown && page.status === Loader.Null)
                        page.setSource(page.view, {
                            source: page.store,
                            ui: root.ui
                        });
                }
            }
        }
    }

    // Long lists fade into the panel at their lower edge.
    PanelFade {
        x: content.x
        y: content.y + content.height - height
        width: content.width
        height: content.height * 0.06
        upwards: true
        place: y
        whole: root.height
    }
}
