import QtQuick
import Velto.Design
import Velto.Todos

// The rows, of which only those in sight exist. The store holds the selection and what is open. With Qt 6.4 a list that reuses
// its rows can't have a bound component for them.
// qmllint disable unqualified type
ListView {
    id: root

    required property TodosSource source
    /// Whether changes are animated from here on.
    required property bool settled
    /// The lower end of what is above; the list glides there.
    required property real start
    /// Whether the focus may move without scrolling.
    property bool still: false
    /// Whether rows come and go with an animation in the next layout. The effect of a filter or a search is immediate.
    readonly property bool moving: movement.running

    /// The row that had the focus is gone.
    signal keyboardLost

    y: root.start
    height: Math.max(0, parent.height - y)
    visible: count > 0 && height > 44 // the form may leave no room for it
    clip: true
    model: root.source.shown.rows
    spacing: 2
    currentIndex: -1
    keyNavigationEnabled: false // the arrows move the selection
    highlightFollowsCurrentItem: false
    reuseItems: true
    cacheBuffer: 320
    bottomMargin: 28
    boundsBehavior: Flickable.StopAtBounds
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Todos")

    // While one of these runs, the list ignores a row's new height: so rows know theirs from the start.
    add: Transition {
        enabled: root.moving
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.springDuration
        }
    }
    displaced: Transition {
        enabled: root.moving
        NumberAnimation {
            property: "y"
            duration: Theme.springDuration
            easing: Theme.spring
        }
    }

    Behavior on start {
        // A list that was scrolled fills what becomes free at once, instead of uncovering its rows.
        enabled: root.settled && root.visible && (targetValue > root.start || (root.contentY <= root.originY + 1 && !scroll.running))
        Spring {}
    }

    // Animates the next change.
    function glide(): void {
        movement.restart();
    }
    // Brings the row into sight, and moves the focus there unless the user is typing.
    function goTo(row: int): void {
        if (row < 0)
            return;
        scroll.stop();
        const from = contentY;
        positionViewAtIndex(row, ListView.Contain);
        const item = itemAtIndex(row);
        // The first row brings its heading along; one at the end is placed above the fade.
        const end = originY + contentHeight + bottomMargin - height;
        const lowest = item ? Math.min(item.y + item.height + bottomMargin - height, end) : originY;
        const to = row === 1 ? originY : Math.max(contentY, lowest);
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
    // Brings what gets the focus within a row into sight.
    function show(item: Item): void {
        let inside = false;
        for (let at = item; at && !inside; at = at.parent)
            inside = at === contentItem;
        if (!inside || root.still || scroll.running)
            return;
        const top = item.mapToItem(contentItem, 0, 0).y;
        const lowest = top + item.height + 8 - (height - bottomMargin);
        contentY = Math.max(originY, Math.min(Math.max(contentY, lowest), top - 4));
    }
    // Keeps a row that unfolds in sight.
    function follow(row: Item): void {
        const below = row.y + row.height + 12 - (contentY + height - bottomMargin / 2);
        if (below > 0)
            contentY += Math.min(below, Math.max(0, row.y - 4 - contentY));
    }

    Timer {
        id: movement

        interval: 100
    }
    NumberAnimation {
        id: scroll

        target: root
        property: "contentY"
        duration: Theme.fadeDuration
        easing.type: Easing.OutQuad
    }

    delegate: TodoRow {
        id: row

        width: root.width
        source: root.source
        onKeyboardLost: root.keyboardLost()
        onHeightChanged: {
            if (row.unfolding && row.unfolded)
                root.follow(row);
        }
        ListView.onPooled: row.rest()
        ListView.onReused: row.wake()
    }
}
// qmllint enable unqualified type
