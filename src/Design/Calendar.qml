pragma ComponentBehavior: Bound

import QtQuick
import Velto.Design

/// A month to pick a day from, above everything else in the window, next to `target`: below it, above it or beside it, where there
/// is room, otherwise lower, so that `target` stays in sight. The arrow keys move by days and weeks,
/// Page Up and Page Down by months, with Shift by years, Home and End to the ends of the week; Return picks, Escape goes back
/// to the previous date. The focus returns to where it was. Created on demand.
Item {
    id: root

    required property Item target
    required property string label
    required property DateModel date

    signal closed

    /// See TabOrder.
    readonly property bool trapsFocus: true
    /// Set once: a binding would move this item out of a window that is being destroyed.
    property Item scene: null
    property Item before: null
    property bool over: false
    /// Where the target is in the window.
    readonly property rect field: root.scene ? root.target.mapToItem(root.scene, 0, 0, root.target.width, root.target.height)
                                             : Qt.rect(0, 0, 0, 0)
    readonly property size room: root.scene ? Qt.size(root.scene.width, root.scene.height) : Qt.size(780, 520)
    readonly property real roomAbove: root.field.y - 4 - 8
    readonly property real roomBelow: root.room.height - 16 - (root.field.bottom + 4)
    readonly property real roomBeside: Math.max(root.room.width - root.field.right, root.field.left) - 8 - panel.side
    /// As wide as the letters need, limited by the window's height; only the height of a cell shrinks.
    readonly property int usual: root.largest(Math.min(root.room.height - 16, root.tall(30 * Theme.textScale)))
    readonly property bool stacked: Math.max(root.roomAbove, root.roomBelow) >= root.tall(root.usual)
    readonly property bool beside: !root.stacked && root.roomBeside >= root.wide(root.usual)
    readonly property int cell: root.stacked || root.beside ? root.usual
                              : Math.max(18 * Theme.textScale, Math.min(root.usual, root.largest(Math.max(root.roomAbove, root.roomBelow))))
    readonly property int line: root.cell * 26 / 30
    /// The height that the cells don't change: margins, gaps and the days' names.
    readonly property real fixed: 30 + names.implicitHeight

    parent: root.scene
    anchors.fill: parent
    z: 900
    Accessible.role: Accessible.Dialog
    Accessible.name: root.label + ", " + root.date.month

    /// The height and the width with such cells, and the cells that fit into such a height.
    function tall(cell: real): real {
        return Math.ceil(7.4 * cell + root.fixed);
    }
    function wide(cell: real): real {
        return 7 * cell + 20;
    }
    function largest(height: real): int {
        return Math.floor((height - root.fixed) / 7.4);
    }
    function finish(): void {
        if (root.over)
            return;
        root.over = true;
        (root.before ? root.before : root.target).forceActiveFocus(Qt.PopupFocusReason);
        root.closed();
    }
    function back(): void {
        root.date.cancel();
        root.finish();
    }
    // Moves the focus to the date.
    function follow(): void {
        days.itemAt(root.date.place)?.forceActiveFocus(Qt.TabFocusReason);
    }
    // Starts at the day that has the focus; on a turned page it isn't the date.
    function press(day: string, event: KeyEvent): void {
        const years = event.modifiers & Qt.ShiftModifier ? 12 : 1;
        event.accepted = true;
        root.date.pick(day);
        switch (event.key) {
        case Qt.Key_Left: root.date.moveDays(-1); break;
        case Qt.Key_Right: root.date.moveDays(1); break;
        case Qt.Key_Up: root.date.moveDays(-7); break;
        case Qt.Key_Down: root.date.moveDays(7); break;
        case Qt.Key_PageUp: root.date.moveMonths(-years); break;
        case Qt.Key_PageDown: root.date.moveMonths(years); break;
        case Qt.Key_Home: root.date.moveToWeekStart(); break;
        case Qt.Key_End: root.date.moveToWeekEnd(); break;
        }
        root.follow();
    }

    Component.onCompleted: {
        root.scene = root.target.Window.contentItem;
        root.before = root.target.Window.activeFocusItem;
        root.follow();
    }
    Keys.onEscapePressed: root.back()

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onPressed: root.back()
        onWheel: wheel => wheel.accepted = true
    }

    RoundedBox {
        id: panel

        readonly property int side: 24
        readonly property real lowest: root.room.height - height - 8
        readonly property bool under: root.roomBelow >= height || root.roomBelow >= root.roomAbove

        x: Math.round(!root.beside ? Math.max(side, Math.min(root.field.x, root.room.width - width - side))
                    : root.room.width - root.field.right - 8 - side >= width ? root.field.right + 8 : root.field.left - 8 - width)
        y: Math.round(Math.max(8, Math.min(root.beside ? root.field.y : under ? root.field.bottom + 4
                                                                              : root.field.y - 4 - height, lowest)))
        width: root.wide(root.usual)
        height: column.height + 18
        radius: 12
        color: Theme.popover
        edge: 1
        edgeColor: Theme.at("white", 0.14)

        // A press between the days must not count as one outside.
        MouseArea {
            property real turned: 0

            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            onWheel: wheel => {
                turned += wheel.angleDelta.y / 120;
                const pages = Math.trunc(turned);
                turned -= pages;
                if (pages !== 0)
                    root.date.turn(-pages);
            }
        }

        Column {
            id: column

            x: 10
            y: 9
            spacing: 4

            Item {
                width: 7 * root.usual
                height: root.line

                PlainText {
                    x: 8
                    anchors.verticalCenter: parent.verticalCenter
                    text: root.date.month
                    size: Theme.textTitle
                    weight: Font.DemiBold
                    Accessible.ignored: true
                }
                IconButton {
                    anchors.right: next.left
                    symbol: "chevron.left"
                    label: qsTr("Previous month")
                    help: ""
                    onClicked: root.date.turn(-1)
                }
                IconButton {
                    id: next

                    anchors.right: parent.right
                    symbol: "chevron.right"
                    label: qsTr("Next month")
                    help: ""
                    onClicked: root.date.turn(1)
                }
            }
            Row {
                id: names

                Repeater {
                    model: root.date.weekdays

                    PlainText {
                        required property string modelData

                        width: root.usual
                        text: modelData
                        size: Theme.textTiny
                        weight: Font.Medium
                        color: Theme.glassTertiary
                        elide: Text.ElideNone
                        horizontalAlignment: Text.AlignHCenter
                        Accessible.ignored: true
                    }
                }
            }
            Grid {
                columns: 7

                Repeater {
                    id: days

                    model: root.date.days

                    ButtonBase {
                        id: dayCell

                        required property int index
                        required property string day
                        required property string number
                        required property bool inMonth
                        required property bool isToday
                        required property bool selected
                        required property string spoken

                        label: dayCell.isToday ? qsTr("%1, today").arg(dayCell.spoken) : dayCell.spoken
                        width: root.usual
                        height: Math.round(root.cell * 28 / 30)
                        corner: height / 2 - 2
                        activeFocusOnTab: dayCell.index === root.date.place || dayCell.activeFocus
                        Accessible.selectable: true
                        Accessible.selected: dayCell.selected
                        onClicked: {
                            root.date.pick(dayCell.day);
                            root.finish();
                        }
                        Keys.onPressed: event => {
                            const moves = [Qt.Key_Left, Qt.Key_Right, Qt.Key_Up, Qt.Key_Down, Qt.Key_PageUp, Qt.Key_PageDown,
                                           Qt.Key_Home, Qt.Key_End];
                            if (moves.includes(event.key))
                                root.press(dayCell.day, event);
                        }

                        RoundedBox {
                            anchors.centerIn: parent
                            width: root.line
                            height: root.cell * 24 / 30
                            radius: height / 2
                            color: dayCell.selected ? Theme.at(Theme.ice, 0.85)
                                                    : Theme.at("white", dayCell.pressed ? 0.2 : dayCell.hovered ? 0.12 : 0)
                        }
                        PlainText {
                            anchors.centerIn: parent
                            text: dayCell.number
                            weight: dayCell.isToday || dayCell.selected ? Font.DemiBold : Font.Normal
                            color: dayCell.selected ? Theme.popover : dayCell.isToday ? Theme.ice
                                 : dayCell.inMonth ? Theme.glassPrimary : Theme.at("white", 0.52)
                            Accessible.ignored: true
                        }
                    }
                }
            }
            Item {
                width: 7 * root.usual
                height: Math.max(root.line, today.height)

                PillButton {
                    id: today

                    anchors.horizontalCenter: parent.horizontalCenter
                    anchors.bottom: parent.bottom
                    text: qsTr("Today")
                    onClicked: {
                        root.date.pickToday();
                        root.finish();
                    }
                }
            }
        }
    }
}
