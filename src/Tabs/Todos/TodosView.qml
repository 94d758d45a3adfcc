import QtQuick
import Velto.Design
import Velto.Stores
import Velto.Todos

// The todos: what cuts the list down, what has happened, the form, and the list itself, of which only the rows in sight exist.
FocusScope {
    id: root

    required property TodosSource source
    required property UI ui

    readonly property int gap: 10
    /// It shows what it should: from here on changes are movements.
    property bool settled: false
    /// Who had the keyboard before the form.
    property Item before: null

    onVisibleChanged: {
        if (root.visible)
            root.source.appeared();
    }
    Component.onCompleted: root.source.appeared()

    Connections {
        target: root.source // qmllint disable type
        function onFocusSearchChanged(): void {
            search.focusAll();
        }
        function onSelectionMoved(): void {
            list.goTo(root.source.selectedRow);
        }
        function onChanged(): void {
            root.settled = true;
        }
        function onRowAboutToMove(): void {
            list.moving = true;
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
            if (root.source.form.shown)
                root.before = root.Window.activeFocusItem;
            else
                root.comeBack();
        }
    }
    // From the form.
    function comeBack(): void {
        const row = list.itemAtIndex(root.source.selectedRow);
        if (root.before?.visible)
            root.before.forceActiveFocus(Qt.OtherFocusReason);
        else if (row)
            list.focusRow(row);
        root.before = null;
    }

    Column {
        id: head

        y: 1
        width: parent.width
        spacing: root.gap

        Item {
            width: parent.width
            height: Theme.controlHeight

            Row {
                id: segments

                spacing: root.gap

                SegmentedControl {
                    visible: root.source.showsScopes
                    title: qsTr("List")
                    options: root.source.scopes
                    onChosen: value => root.source.chooseScope(value)
                }
                SegmentedControl {
                    title: qsTr("Show")
                    options: root.source.filters
                    onChosen: value => root.source.chooseFilter(value)
                }
            }
            TextInputField {
                id: search

                anchors.left: segments.right
                anchors.leftMargin: root.gap
                anchors.right: add.left
                anchors.rightMargin: 6
                label: qsTr("Search")
                prompt: qsTr("Search todos")
                symbol: "magnifyingglass"
                clearable: true
                text: root.source.search
                onEdited: text => root.source.search = text
            }
            IconButton {
                id: add

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
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
                anchors.right: hint.left
                anchors.rightMargin: 16
                words: root.source.summary
                color: root.source.summaryUrgent ? Theme.red : Theme.glassSecondary
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            PlainText {
                id: hint

                anchors.right: parent.right
                anchors.baseline: summary.baseline
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
            // With Qt 6.4 a Loader can't make a bound component.
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

    // Where Tab stops at a list without a selection. The arrows go on from there.
    Item {
        y: list.y
        width: parent.width
        height: list.height - 2
        visible: list.visible && root.source.selectedRow < 0
        activeFocusOnTab: true
        Accessible.role: Accessible.List
        Accessible.name: list.Accessible.name
        Accessible.focusable: true

        FocusRing {
            corner: Theme.radiusRow
        }
    }
    // With Qt 6.4 a list's rows can't be bound components where they are reused.
    // qmllint disable unqualified type
    ListView {
        id: list

        // Where the parts above leave off; the list glides there.
        property real start: head.y + head.height + 6

        y: start
        width: parent.width
        height: Math.max(0, parent.height - y)
        visible: count > 0 && height > 44 // with the form open there may be no room
        clip: true
        model: root.source.rows
        spacing: 2
        currentIndex: -1
        keyNavigationEnabled: false // the arrows move the selection, which is the store's
        highlightFollowsCurrentItem: false
        reuseItems: true
        cacheBuffer: 320
        bottomMargin: 28
        boundsBehavior: Flickable.StopAtBounds
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Todos")

        /// A row goes or comes back. What a filter or a search does to the list is there at once.
        property bool moving: false

        add: Transition {
            NumberAnimation {
                property: "opacity"
                from: 0
                to: 1
                duration: list.moving ? Theme.springDuration : 0
            }
        }
        displaced: Transition {
            onRunningChanged: list.moving = list.moving && running
            NumberAnimation {
                property: "y"
                duration: list.moving ? Theme.springDuration : 0
                easing: Theme.spring
            }
        }

        Behavior on start {
            enabled: root.settled && list.visible
            Spring {}
        }

        // The row comes into sight, and the keyboard goes there unless somebody types.
        function goTo(row: int): void {
            if (row < 0)
                return;
            scroll.stop();
            const from = contentY;
            positionViewAtIndex(row, ListView.Contain);
            const item = itemAtIndex(row);
            // The first row brings its heading along.
            const to = row === 1 ? originY : contentY;
            const typing = root.Window.activeFocusItem instanceof TextInput || root.Window.activeFocusItem instanceof TextEdit;
            if (item && !typing)
                focusRow(item);
            if (Math.abs(to - from) > height) {
                contentY = to;
                return;
            }
            contentY = from;
            scroll.to = to;
            scroll.start();
        }
        function focusRow(row: Item): void {
            row.quiet = true;
            row.forceActiveFocus(Qt.OtherFocusReason);
        }
        // What the keyboard goes to in a row comes into sight.
        function show(item: Item): void {
            let inside = false;
            for (let at = item; at && !inside; at = at.parent)
                inside = at === contentItem;
            if (!inside || scroll.running)
                return;
            const top = item.mapToItem(contentItem, 0, 0).y;
            const lowest = top + item.height + 8 - (height - bottomMargin);
            contentY = Math.max(originY, Math.min(Math.max(contentY, lowest), top - 4));
        }
        // A row that unfolds stays in sight.
        function follow(row: Item): void {
            const below = row.y + row.height + 12 - (contentY + height - bottomMargin / 2);
            if (below > 0)
                contentY += Math.min(below, Math.max(0, row.y - 4 - contentY));
        }

        NumberAnimation {
            id: scroll

            target: list
            property: "contentY"
            duration: Theme.fadeDuration
            easing.type: Easing.OutQuad
        }

        delegate: TodoRow {
            id: row

            width: list.width
            source: root.source
            onHeightChanged: {
                if (row.unfolding && row.unfolded)
                    list.follow(row);
            }
            ListView.onPooled: row.rest()
            ListView.onReused: row.wake()
        }
    }
    // qmllint enable unqualified type

    EmptyNote {
        y: list.start + 2
        visible: root.source.emptyText !== ""
        symbol: root.source.emptySymbol
        text: root.source.emptyText
        action: root.source.emptyButton
        onClicked: root.source.pressEmptyButton()
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
