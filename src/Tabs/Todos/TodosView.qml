import QtQuick
import Velto.Design
import Velto.Todos

// The todos: the filters, what has just happened, the form, and the list, of which only the rows in sight exist.
FocusScope {
    id: root

    required property TodosSource source
    required property UI ui

    readonly property int gap: 10
    /// Whether the tab shows its first content: from here on changes are animated.
    property bool settled: false
    /// What had the focus before the form. Never a field: Escape leaves the form, and must not end up in another field.
    property Item before: null

    onVisibleChanged: {
        if (root.visible)
            root.source.shown.appeared();
    }
    Component.onCompleted: root.source.shown.appeared()
    // Keys that a text field doesn't use: they have moved the selection, and the focus goes along.
    Keys.onUpPressed: root.leaveField()
    Keys.onDownPressed: root.leaveField()

    Connections {
        target: root.source // qmllint disable type
        function onSearchFocusWanted(): void {
            search.focusAll();
        }
        function onChanged(): void {
            root.settled = true;
        }
        function onRowAboutToMove(): void {
            list.glide();
        }
    }
    Connections {
        target: root.source.shown
        function onSelectionMoved(): void {
            list.goTo(root.source.shown.selectedRow);
        }
        function onChanged(): void {
            root.settled = true;
        }
    }
    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged(): void {
            list.show(root.Window.window.activeFocusItem);
        }
    }
    Connections {
        target: root.source.form
        function onShownChanged(): void {
            const item = root.Window.activeFocusItem;
            if (root.source.form.shown)
                root.before = item instanceof TextInput || item instanceof TextEdit ? null : item;
            else
                root.comeBack();
        }
    }
    function leaveField(): void {
        const row = list.itemAtIndex(root.source.shown.selectedRow);
        if (row && !root.source.form.shown)
            list.focusRow(row);
    }
    // Back from the form.
    function comeBack(): void {
        const row = list.itemAtIndex(root.source.shown.selectedRow);
        // What was in sight is in sight again once the form is gone.
        list.still = true;
        if (row && (root.before instanceof TodoRow || !root.before?.visible))
            list.focusRow(row);
        else if (root.before?.visible)
            root.before.forceActiveFocus(Qt.OtherFocusReason);
        list.still = false;
        root.before = null;
    }

    // What appears above the list is uncovered as the list makes room for it, and never lies over rows that still move.
    Item {
        id: above

        // Room for focus rings.
        readonly property int side: 8
        readonly property real end: head.y + head.height + 6

        x: -side
        width: parent.width + 2 * side
        height: Math.min(list.y, end)
        clip: list.visible && list.y < end

        Column {
            id: head

            x: above.side
            y: 1
            width: root.width
            spacing: root.gap

            Item {
                id: bar

                /// Whether the search is below the choices, because there is no room beside them.
                readonly property bool stacked: beside > width - 180 * Theme.textScale
                readonly property real beside: filters.width + (scopes.visible ? scopes.width + root.gap : 0)

                width: parent.width
                height: stacked ? segments.height + root.gap + Theme.controlHeight : Theme.controlHeight

                Flow {
                    id: segments

                    width: bar.stacked ? bar.width : bar.beside
                    spacing: root.gap

                    SegmentedControl {
                        id: scopes

                        visible: root.source.shown.showsScopes
                        title: qsTr("List")
                        options: root.source.shown.scopes
                        onChosen: value => root.source.shown.chooseScope(value)
                    }
                    SegmentedControl {
                        id: filters

                        title: qsTr("Show")
                        options: root.source.shown.filters
                        onChosen: value => root.source.shown.chooseFilter(value)
                    }
                }
                TextInputField {
                    id: search

                    x: bar.stacked ? 0 : bar.beside + root.gap
                    y: bar.height - height
                    width: add.x - 6 - x
                    label: qsTr("Search todos")
                    prompt: label
                    symbol: "magnifyingglass"
                    clearable: true
                    text: root.source.shown.search
                    onEdited: text => root.source.shown.search = text
                }
                IconButton {
                    id: add

                    anchors.right: parent.right
                    anchors.verticalCenter: search.verticalCenter
                    symbol: "plus"
                    label: qsTr("New todo")
                    onClicked: root.source.newDraft()
                }
            }
            Item {
                width: parent.width
                height: summary.height

                PlainText {
                    id: summary

                    anchors.left: parent.left
                    anchors.right: hint.visible ? hint.left : parent.right
                    anchors.rightMargin: hint.visible ? 16 : 0
                    words: root.source.shown.summary
                    color: root.source.shown.summaryUrgent ? Theme.ink(Theme.red) : Theme.glassSecondary
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                PlainText {
                    id: hint

                    anchors.right: parent.right
                    anchors.baseline: summary.baseline
                    visible: implicitWidth + summary.implicitWidth + 16 <= parent.width
                    text: qsTr("↑↓ move · ↩ open · ⌘D done · ⌘N new")
                    size: Theme.textSmall
                    color: Theme.glassTertiary
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
            StateBanner {
                width: parent.width
                feed: root.source.state // qmllint disable type
                retryable: true
                onRetryWanted: root.source.retry()
                onSettingsWanted: root.ui.askForSettings()
            }
            NoticeBar {
                width: parent.width
                visible: root.source.errorText !== ""
                symbol: "exclamationmark.triangle"
                tint: Theme.orange
                text: root.source.errorText
                action: qsTr("Dismiss")
                onClicked: root.source.dismissError()
            }
            NoticeBar {
                width: parent.width
                visible: root.source.storeNote !== ""
                symbol: "exclamationmark.triangle"
                tint: Theme.orange
                text: root.source.storeNote
                action: root.source.storeAction
                onClicked: root.source.pressStoreNote()
            }
            NoticeBar {
                width: parent.width
                visible: root.source.readOnlyNote !== ""
                symbol: "info.circle"
                text: root.source.readOnlyNote
            }
            NoticeBar {
                width: parent.width
                visible: root.source.undoText !== ""
                symbol: "checkmark.circle.fill"
                tint: Theme.green
                text: root.source.undoText
                mostLines: 1
                action: qsTr("Undo")
                onClicked: root.source.undoDone()
            }
            Loader {
                id: place

                width: parent.width
                visible: active
                active: root.source.form.shown
                // With Qt 6.4 a Loader can't create a bound component.
                // qmllint disable unqualified type
                sourceComponent: DraftForm {
                    width: place.width
                    form: root.source.form
                    ui: root.ui
                    room: Math.max(160, root.height - place.y - 8)
                }
                // qmllint enable unqualified type
            }
        }
    }

    // A stop for Tab when nothing in the list is selected. The arrow keys go on from there.
    Item {
        id: stop

        /// Whether the focus came from a row that is gone, perhaps by the pointer: then there is no ring around the whole list.
        property bool quiet: false

        y: list.y
        width: parent.width
        height: list.height - 2
        visible: list.visible && root.source.shown.selectedRow < 0
        activeFocusOnTab: true
        Accessible.role: Accessible.List
        Accessible.name: list.Accessible.name
        Accessible.focusable: true

        onActiveFocusChanged: {
            if (!stop.activeFocus)
                stop.quiet = false;
        }

        FocusRing {
            corner: Theme.radiusRow
            visible: stop.activeFocus && !stop.quiet
        }
    }
    TodoList {
        id: list

        source: root.source
        settled: root.settled
        start: above.end
        width: parent.width
        onKeyboardLost: {
            stop.quiet = stop.visible;
            if (stop.visible)
                stop.forceActiveFocus(Qt.OtherFocusReason);
        }
    }

    EmptyNote {
        // Centred in the free space, a little above the middle.
        x: Math.round((root.width - width) / 2)
        y: Math.round(list.start + Math.max(2, (root.height - list.start - height) * 0.38))
        visible: root.source.shown.emptyText !== "" && !root.source.form.shown
        symbol: root.source.shown.emptySymbol
        text: root.source.shown.emptyText
        action: root.source.shown.emptyButton
        onClicked: root.source.shown.pressEmptyButton()
    }
    ScrollFade {
        area: list
    }
    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: -9
        anchors.top: list.top
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 28
        visible: list.visible && share < 1
        area: list
    }
}
