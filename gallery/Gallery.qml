pragma ComponentBehavior: Bound

import QtQuick
import Velto.Design

/// Every primitive in every state, on black.
Rectangle {
    id: root

    required property list<string> symbols
    required property var feeds
    required property DateModel date
    required property DateModel wrong
    /// Whether a picture is taken: popups are open then.
    required property bool still

    width: 1160
    height: 1380

    Component.onCompleted: {
        if (root.still)
            dateField.open();
    }

    // Only the linter can't find QtQml.Models, which is a package of its own.
    // qmllint disable
    ListModel {
        id: filters

        ListElement { value: "Today"; text: "Today"; selected: false }
        ListElement { value: "Overdue"; text: "Overdue"; selected: true }
        ListElement { value: "Upcoming"; text: "Upcoming"; selected: false }
        ListElement { value: "All"; text: "All"; selected: false }
    }
    // qmllint enable
    function choose(value: string): void {
        for (let i = 0; i < filters.count; ++i)
            filters.setProperty(i, "selected", filters.get(i).value === value);
    }
    color: "black"

    Column {
        x: 24
        y: 24
        width: 840
        spacing: 20

        Sample {
            name: "TabButton"

            Item {
                width: tabs.width
                height: tabs.height

                SelectionCapsule { row: tabs; target: selectedTab }
                Row {
                    id: tabs

                    spacing: 2

                    TabButton { title: "Home"; symbol: "house"; badge: 12 }
                    TabButton { title: "Todos"; symbol: "checklist"; badge: 3; hovered: true; help: "" }
                    TabButton {
                        id: selectedTab

                        title: "Agents"
                        symbol: "sparkle"
                        badge: 2
                        selected: true
                    }
                    TabButton { title: "Quillbox"; symbol: "brain"; pressed: true }
                    TabButton {
                        title: "Connect"
                        symbol: "puzzlepiece.extension"

                        FocusRing { corner: height / 2; visible: true }
                    }
                }
            }
        }

        Sample {
            name: "IconButton"

            IconButton { symbol: "pin"; label: "Pin open" }
            IconButton { symbol: "pin.fill"; label: "Unpin"; on: true }
            IconButton { symbol: "arrow.clockwise"; label: "Refresh"; hovered: true; help: "" }
            IconButton { symbol: "gearshape"; label: "Settings"; pressed: true }
            IconButton {
                symbol: "ellipsis"
                label: "More"

                FocusRing { visible: true }
            }
            IconButton { symbol: "xmark"; label: "Close"; available: false }
        }

        Sample {
            name: "PillButton"

            PillButton { text: "View session" }
            PillButton { text: "Hovered"; hovered: true }
            PillButton { text: "Pressed"; pressed: true }
            PillButton {
                text: "Focused"

                FocusRing { corner: height / 2; visible: true }
            }
            PillButton { text: "Disabled"; available: false }
            PillButton { text: "Amber"; tint: Theme.amber }
            PillButton { text: "Mint"; tint: Theme.mint }
            PillButton { text: "Coral"; tint: Theme.coral }
            PillButton { text: "White"; tint: "white" }
        }

        Sample {
            name: "Pill"

            Pill { text: "Deny"; tone: Theme.amber }
            Pill { text: "Allow"; tone: Theme.amber; hovered: true }
            Pill { text: "Allow"; tone: Theme.amber; pressed: true }
            Pill { text: "Resume"; tone: Theme.mint }
            Pill { text: "Join"; tone: Theme.ice }
            Pill {
                text: "Bad"
                tone: Theme.coral

                FocusRing { corner: height / 2; visible: true }
            }
        }

        Sample {
            name: "Chip, ChipButton"

            ChipButton { text: "3 waiting"; symbol: "hand.raised.fill"; tint: Theme.amber }
            ChipButton { text: "5 due"; symbol: "checklist"; hovered: true }
            ChipButton { text: "Weekly sync in 12 min"; symbol: "calendar"; pressed: true }
            Chip { text: "Overdue · Fri 20 Nov"; symbol: "exclamationmark.circle"; tint: Theme.red }
            Chip { text: "anna"; symbol: "person"; tint: Theme.cyan }
            Chip { text: "2"; symbol: "text.bubble" }
        }

        Sample {
            name: "SegmentedControl"

            SegmentedControl { title: "Show"; options: filters; onChosen: value => root.choose(value) }
        }

        Sample {
            name: "TextInputField"

            TextInputField {
                width: 150
                label: "Search"
                prompt: "Search todos"
                symbol: "magnifyingglass"
                clearable: true
                onEdited: text => this.text = text
            }
            TextInputField {
                width: 150
                label: "Search"
                symbol: "magnifyingglass"
                clearable: true
                text: "Largely irrelevant words, long"
                onEdited: text => this.text = text
            }
            TextInputField {
                width: 110
                label: "Focused"
                text: "Focused"

                FieldBox { anchors.fill: parent; focused: true }
            }
            TextInputField { width: 110; label: "Token"; text: "secret"; secure: true }
            TextInputField { width: 80; label: "Wrong"; text: "Wrong"; wrong: true }
            TextInputField { width: 80; label: "Off"; text: "Disabled"; available: false }
        }

        Sample {
            name: "TextAreaField"

            TextAreaField { width: 230; label: "Notes"; prompt: "Notes (optional)" }
            TextAreaField {
                width: 230
                label: "Notes"
                text: "One line,\nanother one,\na third that is too long to stand in one line only,\nand\nmore\nand more"
            }
        }

        Sample {
            name: "Check, Switch"

            CheckField { text: "Due" }
            CheckField { text: "Due"; checked: true; onToggled: checked => this.checked = checked }
            CheckField { text: "Hovered"; hovered: true }
            CheckField {
                text: "Focused"
                checked: true

                FocusRing { corner: 6; visible: true }
            }
            CheckField { text: "Disabled"; available: false }
            SwitchField { text: "Off"; onToggled: checked => this.checked = checked }
            SwitchField { text: "On"; checked: true; onToggled: checked => this.checked = checked }
        }

        Sample {
            name: "DateField"

            DateField { label: "Due date"; date: root.date }
            DateField { label: "Due date"; date: root.wrong; typing: true }
            DoneButton { label: "Mark done" }
            DoneButton { label: "Mark done"; hovered: true }
        }

        Sample {
            name: "NoticeBar"

            Column {
                spacing: 6

                NoticeBar {
                    width: 540
                    symbol: "exclamationmark.triangle"
                    tint: Theme.orange
                    text: "Couldn't save that change to Quillbox (no details). Your list was reloaded."
                    action: "Dismiss"
                }
                NoticeBar {
                    width: 540
                    symbol: "checkmark.circle.fill"
                    tint: Theme.green
                    text: "Done: Ask for the invoices"
                    action: "Undo"
                }
                NoticeBar {
                    width: 540
                    symbol: "info.circle"
                    text: "Read-only: to add, edit and comment from Velto, install the todo.py from integrations/quillbox. Marking done works."
                }
            }
        }

        Sample {
            name: "LiveDot, Spinner"

            LiveDot { anchors.verticalCenter: parent.verticalCenter }
            LiveDot { anchors.verticalCenter: parent.verticalCenter; live: false }
            LiveDot { anchors.verticalCenter: parent.verticalCenter; color: Theme.amber; live: false }
            LiveDot {
                anchors.verticalCenter: parent.verticalCenter
                diameter: 12
                color: Theme.mint
            }
            Spinner {}
            Digits { anchors.verticalCenter: parent.verticalCenter; value: "11:48" }
            Digits {
                anchors.verticalCenter: parent.verticalCenter
                value: "3!"
                color: Theme.at("white", 0.85)
            }
        }

        Sample {
            name: "SectionLabel"

            SectionLabel { text: "Waiting for you 7" }
        }

        Sample {
            name: "GlassCard"

            GlassCard {
                width: 230

                PlainText {
                    text: "Know the moment an agent finishes"
                    size: Theme.textTitle
                    weight: Font.DemiBold
                    width: parent.width
                }
                PlainText {
                    width: parent.width
                    multiline: true
                    words: "Claude Code can tell Velto when an agent is done or needs you."
                    color: Theme.glassSecondary
                }
                PillButton { text: "Connect…" }
            }
            GlassCard {
                width: 150
                tint: Theme.ice

                PlainText { text: "Tinted" }
            }
            GlassCard {
                width: 150
                interactive: true
                label: "A card that is a button"

                PlainText { text: "Pressable" }
            }
        }

        Sample {
            name: "EmptyNote"

            EmptyNote { symbol: "checkmark.circle"; text: "Nothing overdue."; action: "Show all" }
            EmptyNote { symbol: "brain"; text: "Nothing new in Quillbox right now." }
        }

        Sample {
            name: "StateBanner"

            Column {
                spacing: 12

                Repeater {
                    model: root.feeds

                    StateBanner {
                        required property var modelData

                        width: 540
                        feed: modelData
                        retryable: true
                    }
                }
            }
        }

        Sample {
            name: "PlainText"

            Column {
                spacing: 4

                PlainText {
                    width: 500
                    words: "PR <img src='http://x'> & <b>bold</b>\nsecond line\u0007\u202E reversed, and long enough to be cut at the end of it"
                }
                PlainText {
                    width: 500
                    words: "إصلاح تسجيل الدخول في بوابة الدفع · Größenänderung"
                    elide: Text.ElideMiddle
                }
            }
        }

        Sample {
            name: "ScrollThumb"

            Rectangle {
                width: 200
                height: 56
                radius: Theme.radiusRow
                color: Theme.at("white", 0.05)

                Flickable {
                    id: scrolled

                    anchors.fill: parent
                    anchors.margins: 6
                    contentHeight: longText.height
                    contentY: 24
                    clip: true

                    PlainText {
                        id: longText

                        width: parent.width - 12
                        multiline: true
                        words: Array(8).fill("A line among many").join("\n")
                        color: Theme.glassSecondary
                    }
                }
                ScrollThumb {
                    anchors.right: parent.right
                    anchors.top: parent.top
                    anchors.bottom: parent.bottom
                    anchors.margins: 4
                    area: scrolled
                }
            }
        }

        Sample {
            name: "PopupMenu, Sheet"

            PillButton { id: menuButton; text: "Open the menu"; onClicked: menu.active = true }
            PillButton { id: sheetButton; text: "Open the sheet"; onClicked: sheet.active = true }
            PlainText { id: answer; color: Theme.glassSecondary; topPadding: 4 }
        }

        Sample {
            name: "HelpTip"

            Item { width: 120; height: 1 }
            IconButton {
                symbol: "gearshape"
                label: "Settings"
                hovered: true
                help: "Hide these sessions from the velto. Running sessions are never cleared."
            }
        }
    }

    Loader {
        id: menu

        active: false
        sourceComponent: PopupMenu {
            target: menuButton
            entries: ["Open folder", "Hide session"]
            onChosen: index => answer.text = entries[index]
            onClosed: menu.active = false
        }
    }
    Loader {
        id: sheet

        active: false
        sourceComponent: Sheet {
            target: sheetButton
            title: "Add these hooks to Claude Code?"
            onCancelled: sheet.active = false

            PlainText {
                width: parent.width
                multiline: true
                words: "A backup is saved first, and Disconnect removes it again."
                color: Theme.glassSecondary
            }
            PillButton {
                anchors.right: parent.right
                text: "Cancel"
                tint: "white"
                focus: true
                onClicked: sheet.active = false
            }
        }
    }

    DateField { id: dateField; x: 910; y: 640; label: "Due date"; date: root.date }

    Grid {
        x: 910
        y: 24
        columns: 7
        columnSpacing: 14
        rowSpacing: 14

        Repeater {
            model: root.symbols

            Column {
                id: cell

                required property string modelData

                spacing: 6

                Symbol { name: cell.modelData }
                Symbol { name: cell.modelData; size: Theme.textSmall; color: Theme.ice }
            }
        }
    }
}
