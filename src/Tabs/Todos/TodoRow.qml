import QtQuick
import Velto.Design
import Velto.Todos

// A row of the list: a project's heading, or a todo with what it shows when open.
Item {
    id: root

    required property TodosSource source
    required property bool isHeading
    required property string todoId
    required property string title
    required property string prioritySymbol
    required property bool highPriority
    required property string dueText
    required property string dueSymbol
    required property bool overdue
    required property string person
    required property string commentCount
    required property string spoken
    required property bool open
    required property bool selected
    required property string details
    required property var comments
    required property string commentText

    readonly property bool isTodoRow: !root.isHeading
    readonly property bool hasChips: root.dueText !== "" || root.person !== "" || root.commentCount !== ""
    /// Computed without a positioner, which would be a frame late.
    readonly property real wanted: root.isHeading ? 30 * Theme.textScale : line.height + (root.unfolded ? more.height + 10 : 0)
    /// See ItemAccessible.
    readonly property bool pressable: true
    /// Hidden, until the list reuses the row for another todo.
    property bool resting: true
    /// Whether the row shows its details. Set after `unfolding`, which makes the height animate to them.
    property bool unfolded: false
    property bool unfolding: false
    /// Whether the focus came with the arrow keys: the selection shows it then, and a ring would repeat that.
    property bool quiet: false
    /// Whether the details were hidden since the row got the focus.
    property bool folded: false
    /// See ItemAccessible.
    readonly property var expanded: root.isHeading ? undefined : root.open

    /// The row was recycled while it had the focus.
    signal keyboardLost

    height: root.wanted
    visible: !root.resting
    activeFocusOnTab: root.isTodoRow && (root.selected || root.activeFocus)
    Accessible.role: root.isHeading ? Accessible.Heading : Accessible.ListItem
    Accessible.name: Plain.line(root.spoken)
    // Spoken when it changes on the focused row: the toolkit doesn't report that something unfolds.
    Accessible.description: !root.open ? (root.folded ? qsTr("Details hidden") : "")
                          : root.details === "" ? qsTr("Details shown")
                          : qsTr("Details shown: %1").arg(Plain.line(root.details.slice(0, 300)))
    Accessible.focusable: root.isTodoRow
    Accessible.selectable: root.isTodoRow
    Accessible.selected: root.selected
    Accessible.onPressAction: root.press()
    Component.onCompleted: root.wake()
    onActiveFocusChanged: {
        if (!root.activeFocus)
            root.quiet = root.folded = false;
    }

    onOpenChanged: {
        if (root.resting)
            return;
        root.unfolding = true;
        root.unfolded = root.open;
        root.folded = root.activeFocus && !root.open;
    }

    Behavior on height {
        enabled: root.unfolding
        Spring {
            onRunningChanged: root.unfolding = root.unfolding && running
        }
    }

    function press(): void {
        root.source.shown.press(root.todoId);
    }
    function rest(): void {
        let had = false;
        for (let at = root.Window.activeFocusItem; at && !had; at = at.parent)
            had = at === root;
        root.unfolding = false;
        root.unfolded = false;
        root.focus = done.focus = fold.focus = false;
        root.resting = true;
        if (had)
            root.keyboardLost();
    }
    function wake(): void {
        root.opacity = 1; // it may have faded out as another todo
        root.resting = false;
        root.unfolded = root.open;
    }

    PlainText {
        y: Math.round(10 * Theme.textScale)
        visible: root.isHeading
        width: parent.width
        words: root.isHeading ? root.title : ""
        size: Theme.textTitle
        weight: Font.DemiBold
        color: Theme.glassSecondary
        Accessible.ignored: true
    }

    RoundedBox {
        anchors.fill: parent
        visible: opacity > 0
        opacity: root.selected ? 1 : 0
        radius: Theme.radiusRow
        color: Theme.at("white", root.open ? 0.07 : 0.045)
        edge: 1
        edgeColor: Theme.at("white", 0.22)

        Behavior on opacity {
            enabled: !root.resting
            NumberAnimation {
                duration: Theme.fadeDuration
                easing.type: Easing.OutQuad
            }
        }
    }
    // Inside the row: the page clips what extends beyond its sides.
    FocusRing {
        anchors.margins: 0
        corner: Theme.radiusRow - 2
        visible: root.activeFocus && !root.quiet
    }

    Item {
        id: line

        /// The y at which something of this height is level with the capitals of the title's first line.
        function beside(height: real): real {
            return Math.round(words.y - Theme.capitalsDrop(name.font.pixelSize, height) + 0.5);
        }

        width: parent.width
        height: words.height + 2 * words.y
        visible: root.isTodoRow

        TapHandler {
            onTapped: root.press()
        }

        Item {
            id: words

            x: Math.round(38 * Theme.textScale)
            y: Math.round(7 * Theme.textScale)
            width: fold.x - x - 8
            height: name.height + (root.hasChips ? 5 + chip.implicitHeight : 0)

            Row {
                width: parent.width
                spacing: Theme.gapTight

                Symbol {
                    id: priority

                    visible: root.prioritySymbol !== ""
                    name: root.prioritySymbol
                    size: Theme.textSmall
                    font.weight: Font.Bold
                    color: root.highPriority ? Theme.orange : Theme.glassSecondary
                    topPadding: 1
                }
                PlainText {
                    id: name

                    width: parent.width - (root.prioritySymbol !== "" ? priority.width + parent.spacing : 0)
                    multiline: true
                    words: root.isHeading ? "" : root.title
                    size: Theme.textTitle
                    weight: root.highPriority ? Font.DemiBold : Font.Normal
                    elide: Text.ElideRight
                    maximumLineCount: root.unfolded ? 10000 : 2
                    Accessible.ignored: true
                }
            }
            Row {
                anchors.bottom: parent.bottom
                visible: root.hasChips
                spacing: Math.round(6 * Theme.textScale)

                Chip {
                    id: chip

                    visible: root.dueText !== ""
                    text: root.dueText
                    symbol: root.dueSymbol
                    tint: root.overdue ? Theme.red : Theme.glassSecondary
                }
                Chip {
                    visible: root.person !== ""
                    text: root.person
                    symbol: "person"
                    tint: Theme.cyan
                }
                Chip {
                    visible: root.commentCount !== ""
                    text: root.commentCount
                    symbol: "text.bubble"
                }
            }
        }
        DoneButton {
            id: done

            x: Math.round(7 * Theme.textScale)
            y: line.beside(height)
            activeFocusOnTab: root.selected || activeFocus
            label: qsTr("Mark done: %1").arg(root.title.slice(0, 200))
            help: qsTr("Mark done (⌘D) — you can undo for 5 seconds")
            onClicked: root.source.finish(root.todoId)
        }
        IconButton {
            id: fold

            anchors.right: parent.right
            anchors.rightMargin: Theme.paddingCard - overhang
            y: line.beside(height)
            activeFocusOnTab: root.selected || activeFocus
            symbol: root.open ? "chevron.up" : "chevron.down"
            label: (root.open ? qsTr("Hides details: %1") : qsTr("Shows details: %1")).arg(root.title.slice(0, 200))
            help: root.open ? qsTr("Hides details") : qsTr("Shows details")
            onClicked: root.press()
        }
    }

    Item {
        x: words.x
        y: line.height
        width: parent.width - x - 12
        height: Math.max(0, root.height - y)
        clip: root.unfolding

        Loader {
            id: more

            width: parent.width
            // It goes when the row has closed over it.
            active: (root.unfolded || root.unfolding) && root.isTodoRow
            enabled: root.unfolded
            onLoaded: (more.item as TodoDetails).settle()
            // With Qt 6.4 a Loader can't create a bound component.
            // qmllint disable unqualified
            sourceComponent: TodoDetails {
                source: root.source
                todoId: root.todoId
                title: root.title
                details: root.details
                comments: root.comments
                typed: root.commentText
            }
            // qmllint enable unqualified
        }
    }
}
