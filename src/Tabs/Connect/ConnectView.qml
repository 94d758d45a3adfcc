import QtQuick
import Velto.Agents
import Velto.Connect
import Velto.Design

// Which tools Velto looks at, and how each is connected.
FocusScope {
    id: root

    required property ConnectSource source
    required property UI ui

    function holds(outer: Item, item: Item): bool {
        for (let at = item; at; at = at.parent) {
            if (at === outer)
                return true;
        }
        return false;
    }
    // The page follows the focus.
    function follow(item: Item): void {
        if (root.holds(page.contentItem, item))
            root.reveal(item);
    }
    // Who opened a form by a key goes on in it. A click leaves the keyboard where it is. (Qt 6.4's linter crashes on an Item here.)
    function enter(form: var): void {
        const first = form.nextItemInFocusChain();
        if (root.holds(page.contentItem, root.Window.window.activeFocusItem) && root.holds(form, first))
            first.forceActiveFocus(Qt.TabFocusReason);
    }
    function reveal(item: Item): void {
        const place = item.mapToItem(page.contentItem, 0, 0).y;
        if (place - 8 < page.wantedY)
            page.wantedY = place < 64 ? 0 : place - 8;
        else if (place + item.height + 32 > page.wantedY + page.height)
            page.wantedY = Math.max(0, Math.min(place - 8, place + item.height + 32 - page.height));
        page.contentY = page.wantedY;
    }
    onVisibleChanged: {
        if (root.visible)
            root.source.appeared();
    }
    Component.onCompleted: root.source.appeared()

    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged(): void {
            root.follow(root.Window.window.activeFocusItem);
        }
    }
    Connections {
        target: root.source // qmllint disable type
        function onHooksWanted(): void {
            if (!sheet.active) {
                root.ui.sheetOpened();
                sheet.active = true;
            }
        }
        function onOtherWindowWanted(): void {
            root.ui.close();
        }
        function onFormOpened(module: string): void {
            const form = module === "work" ? work : module === "calendar" ? calendar : module === "usage" ? usage : mcp;
            column.forceLayout();
            root.reveal(form);
            root.enter(form);
        }
    }

    Flickable {
        id: page

        /// Where the page will come to rest; it may still be moving.
        property real wantedY: 0

        anchors.fill: parent
        contentWidth: width
        contentHeight: column.height
        bottomMargin: 28
        boundsBehavior: Flickable.StopAtBounds
        onContentYChanged: {
            if (page.moving)
                page.wantedY = page.contentY;
        }

        Behavior on contentY {
            enabled: !page.moving && !Theme.reducedMotion

            NumberAnimation {
                duration: Theme.fadeDuration
            }
        }

        Column {
            id: column

            width: page.width
            spacing: Theme.gapSection

            GlassCard {
                width: parent.width

                Item {
                    id: mode

                    /// Whether the choice is below the words, because there is no room beside them.
                    readonly property bool stacked: width - picker.width - Theme.gapSection < 260 * Theme.textScale

                    width: parent.width
                    height: mode.stacked ? words.height + Theme.gap + picker.height : Math.max(words.height, picker.height)

                    Column {
                        id: words

                        width: mode.stacked ? mode.width : mode.width - picker.width - Theme.gapSection
                        spacing: 3

                        PlainText {
                            text: qsTr("Mode")
                            size: Theme.textTitle
                            weight: Font.DemiBold
                            Accessible.role: Accessible.Heading
                            Accessible.name: text
                        }
                        PlainText {
                            width: parent.width
                            multiline: true
                            text: qsTr("Choose a mode, then make it yours.")
                            color: Theme.glassSecondary
                            Accessible.role: Accessible.StaticText
                            Accessible.name: text
                        }
                        PlainText {
                            width: parent.width
                            multiline: true
                            text: qsTr("Modes only choose defaults. Every tool stays individually controllable.")
                            size: Theme.textSmall
                            color: Theme.glassTertiary
                            Accessible.role: Accessible.StaticText
                            Accessible.name: text
                        }
                    }
                    SegmentedControl {
                        id: picker

                        x: mode.stacked ? 0 : mode.width - width
                        y: mode.stacked ? mode.height - height : Math.round((mode.height - height) / 2)
                        title: qsTr("Mode")
                        options: root.source.modes
                        onChosen: value => root.source.chooseMode(value)
                    }
                }
            }
            TileGroup {
                width: parent.width
                heading: qsTr("Work")
                model: root.source.work
                source: root.source
            }
            TileGroup {
                width: parent.width
                heading: qsTr("Context")
                model: root.source.context
                source: root.source
            }
            TileGroup {
                width: parent.width
                heading: qsTr("Utilities")
                model: root.source.utilities
                source: root.source
            }
            Fading {
                id: usage

                width: parent.width
                shown: root.source.usageOpen

                UsagePlot {
                    width: parent.width
                    source: root.source
                }
            }
            Fading {
                id: work

                width: parent.width
                shown: root.source.workFormOpen

                WorkFormView {
                    width: parent.width
                    source: root.source
                }
            }
            Fading {
                id: calendar

                width: parent.width
                shown: root.source.calendarFormOpen

                CalendarFormView {
                    width: parent.width
                    form: root.source.calendar
                    onPopupOpenChanged: popupOpen ? root.ui.sheetOpened() : root.ui.sheetClosed()
                }
            }
            Fading {
                id: mcp

                width: parent.width
                shown: root.source.mcpFormOpen

                McpFormView {
                    width: parent.width
                    form: root.source.mcp
                }
            }
        }
    }
    ScrollFade {
        area: page
    }
    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: -9
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 28
        area: page
    }

    Loader {
        id: sheet

        active: false
        // With Qt 6.4 a Loader can't create a bound component.
        // qmllint disable unqualified
        sourceComponent: HookPreview {
            readonly property bool panelOpen: root.ui.expanded

            target: root
            source: root.source.agents
            onPanelOpenChanged: {
                if (!panelOpen)
                    done();
            }
            onDone: sheet.active = false
        }
        // qmllint enable unqualified
        onActiveChanged: {
            if (!active)
                root.ui.sheetClosed();
        }
    }
    Component.onDestruction: {
        if (sheet.active)
            root.ui.sheetClosed();
    }
}
