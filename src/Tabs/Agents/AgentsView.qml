import QtQuick
import Velto.Agents
import Velto.Design

// Claude Code's sessions and the other AI tools that run. One scrolling page; only the rows in sight exist.
FocusScope {
    id: root

    required property AgentsSource source
    required property UI ui
    readonly property bool takesArrows: true
    Component.onCompleted: {
        if (!root.source.scanned)
            root.source.scan();
    }

    // The page follows the focus.
    function follow(item: Item): void {
        let inside = false;
        for (let at = item; at && !inside; at = at.parent)
            inside = at === list.contentItem;
        if (!inside)
            return;
        const top = item.mapToItem(list.contentItem, 0, 0).y;
        if (top - 8 < list.contentY)
            list.contentY = top - list.originY < 64 ? list.originY : top - 8; // near the top, the headings show too
        else if (top + item.height + 32 > list.contentY + list.height)
            list.contentY = top + item.height + 32 - list.height;
    }
    function collectRows(item: Item): var {
        let rows = [];
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i];
            if (child.visible)
                rows = rows.concat(child.isAgentRow === true ? [child] : root.collectRows(child));
        }
        return rows;
    }
    // The visible rows, from top to bottom.
    function rows(): var {
        const place = item => item.mapToItem(list.contentItem, 0, 0).y;
        return root.collectRows(list.contentItem).sort((a, b) => place(a) - place(b));
    }
    // Moves the focus to the row above or below the one that has it.
    function moveRow(step: int): void {
        const rows = root.rows();
        const now = rows.findIndex(row => row.holdsFocus);
        const next = now < 0 ? rows.find(row => row.mapToItem(list, 0, 0).y >= 0) : rows[now + step];
        if (next)
            next.forceActiveFocus(Qt.TabFocusReason);
    }
    // Unfolded by keyboard, the list moves the focus to the first new row; folded, it leaves it on the button.
    function toggleWaiting(button: Item): void {
        const byKeys = button.activeFocus;
        const shown = list.count;
        root.source.toggleWaiting();
        list.forceLayout();
        if (byKeys && list.count > shown)
            list.itemAtIndex(shown)?.forceActiveFocus(Qt.TabFocusReason);
        else if (byKeys)
            root.follow(button);
    }
    // Moves the focus to the next row when this one is about to go.
    function leave(row: AgentRow): void {
        if (!row.holdsFocus)
            return;
        const rows = root.rows();
        const now = rows.indexOf(row);
        const next = rows[now + 1] ?? rows[now - 1];
        if (next)
            next.forceActiveFocus(Qt.TabFocusReason);
    }
    Keys.onDownPressed: root.moveRow(1)
    Keys.onUpPressed: root.moveRow(-1)

    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged(): void {
            root.follow(root.Window.window.activeFocusItem);
        }
    }

    // With Qt 6.4 a list's header and footer can't be bound components.
    // qmllint disable unqualified type
    ListView {
        id: list

        anchors.fill: parent
        model: root.source.sessions
        spacing: 4
        keyNavigationEnabled: false // the arrows go through all rows of the page
        reuseItems: visible && count > 0 // what was kept for reuse goes with the list, and when the panel closes
        cacheBuffer: 104 // two rows
        bottomMargin: 28
        boundsBehavior: Flickable.StopAtBounds
        Accessible.role: Accessible.List
        // A list at its top stays there when rows are added above.
        property real lastOrigin: 0
        onOriginYChanged: {
            if (contentY <= lastOrigin + 1)
                contentY = originY;
            lastOrigin = originY;
        }
        Accessible.name: qsTr("Agents")

        header: Column {
            width: list.width
            spacing: 8
            bottomPadding: 4

            HooksCard {
                width: parent.width
                visible: root.source.offersHooks
                source: root.source
                ui: root.ui
            }
            StateBanner {
                width: parent.width
                feed: root.source.hearing
                retryable: true
                onRetryWanted: root.source.tryHearing()
            }
            StateBanner {
                width: parent.width
                feed: root.source.state
                retryable: true
                onSettingsWanted: root.ui.askForSettings()
                onRetryWanted: root.source.refresh()
            }
        }

        section.property: "working"
        section.delegate: Item {
            id: heading

            required property string section
            readonly property bool working: heading.section === "true"

            width: list.width
            height: Math.round((clear.visible ? 40 : 38) * Theme.textScale)

            SectionLabel {
                id: label

                anchors.bottom: parent.bottom
                // As far from its rows as on the other tabs, or as the button needs.
                bottomPadding: Math.round((clear.visible ? 12 : 10) * Theme.textScale) - list.spacing
                text: heading.working ? qsTr("Working · %1").arg(root.source.runningCount)
                                      : qsTr("Waiting for you · %1").arg(root.source.waitingCount)
            }
            PillButton {
                id: clear

                anchors.right: parent.right
                y: label.y + Math.round((label.topPadding + label.height - label.bottomPadding - height) / 2) // level with the letters
                visible: !heading.working
                text: qsTr("Clear waiting")
                help: qsTr("Hide these sessions from the velto. Running sessions are never cleared.")
                tint: "white"
                onClicked: root.source.clearWaiting()
            }
        }

        delegate: AgentRow {
            id: sessionRow

            width: list.width
            source: root.source
            ui: root.ui
            onLeaving: root.leave(sessionRow)
            ListView.onPooled: sessionRow.rest()
            ListView.onReused: sessionRow.resting = false
        }

        footer: Column {
            id: footer

            readonly property bool bare: list.count === 0 && otherMac.count === 0 && tools.count === 0
            // No rows at all, only a note about that: it goes in the middle of the page, and the buttons with it.
            readonly property bool centred: footer.bare && note.visible

            width: list.width
            topPadding: Theme.gapSection - list.spacing
            spacing: Math.round(10 * Theme.textScale)

            PillButton {
                id: fold

                visible: root.source.waitingFolds
                text: root.source.waitingExpanded ? qsTr("Show fewer") : qsTr("Show %1 more").arg(root.source.hiddenWaiting)
                onClicked: root.toggleWaiting(fold)
            }
            PlainText {
                visible: root.source.staleCount > 0
                text: qsTr("%1 older or cleared sessions are tucked away.").arg(root.source.staleCount)
                color: Theme.glassTertiary
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            SectionLabel {
                visible: otherMac.count > 0
                text: qsTr("On your other Mac · via Quillbox")
            }
            Column {
                width: parent.width

                Repeater {
                    id: otherMac

                    model: root.source.otherMac

                    OtherMacRow {
                        width: list.width
                    }
                }
            }
            // The note and the button under it are in the middle of what is left of the page.
            Item {
                readonly property real rest: list.height - (list.headerItem?.height ?? 0) - list.bottomMargin - 80 * Theme.textScale

                width: 1
                height: footer.centred ? Math.max(24, Math.round(rest / 2)) : 24
                visible: note.visible
            }
            EmptyNote {
                id: note

                anchors.horizontalCenter: parent.horizontalCenter
                visible: root.source.empty && otherMac.count === 0
                symbol: "sparkle"
                text: qsTr("No agents are running right now")
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            SectionLabel {
                visible: tools.count > 0
                text: qsTr("Also running")
            }
            Column {
                width: parent.width

                Repeater {
                    id: tools

                    model: root.source.tools

                    ToolRow {
                        width: list.width
                    }
                }
            }
            Row {
                x: footer.centred ? Math.round((footer.width - width) / 2) : 0
                visible: root.source.hooksInstalled
                spacing: Math.round(10 * Theme.textScale)

                PillButton {
                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("Disconnect")
                    help: qsTr("Takes Velto's hooks out of ~/.claude/settings.json again. A backup is saved first.")
                    tint: "white"
                    onClicked: root.source.removeHooks()
                }
                PlainText {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: root.source.hookErrorText !== "" || root.source.heard
                    words: root.source.hookErrorText !== "" ? root.source.hookErrorText : qsTr("Claude Code tells Velto when an agent is done or needs you.")
                    size: Theme.textSmall
                    color: root.source.hookErrorText !== "" ? Theme.ink(Theme.coral) : Theme.glassTertiary
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
            Row {
                x: footer.centred ? Math.round((footer.width - width) / 2) : 0
                topPadding: footer.bare && !footer.centred ? Theme.gapSection : 4
                spacing: Math.round(10 * Theme.textScale)

                PillButton {
                    id: scan

                    text: root.source.scanning ? qsTr("Scanning") : qsTr("Scan this Mac")
                    available: !root.source.scanning
                    onClicked: root.source.scan()
                }
                PlainText {
                    anchors.verticalCenter: scan.verticalCenter
                    visible: root.source.scannedText !== "" && !root.source.scanning
                    text: root.source.scannedText
                    size: Theme.textSmall
                    color: Theme.glassTertiary
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }
    }

    // qmllint enable unqualified type

    ScrollFade {
        area: list
    }
    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: -9
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 28
        area: list
    }
}
