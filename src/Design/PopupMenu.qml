pragma ComponentBehavior: Bound

import QtQuick
import Velto.Design

/// A small menu over everything else in the window, at a control. Arrows move, Return chooses, Escape and a press elsewhere
/// close it; who had the keyboard before has it again then. Made when it is wanted.
Item {
    id: root

    required property Item target
    /// What it offers, in order.
    required property list<string> entries

    signal chosen(int index)
    signal closed

    /// See TabOrder.
    readonly property bool trapsFocus: true
    /// Set once: a binding would move this out of a window that is about to go.
    property Item scene: null
    property bool over: false
    property Item before: null

    parent: root.scene
    anchors.fill: parent
    z: 900
    Accessible.role: Accessible.PopupMenu
    Accessible.name: qsTr("Menu")

    function finish(): void {
        if (root.over)
            return;
        root.over = true;
        (root.before ?? root.target).forceActiveFocus();
        root.closed();
    }
    function move(step: int): void {
        const count = repeater.count;
        for (let i = 0; i < count; ++i) {
            if (repeater.itemAt(i).activeFocus) {
                repeater.itemAt((i + step + count) % count).forceActiveFocus();
                return;
            }
        }
        repeater.itemAt(0).forceActiveFocus();
    }

    Component.onCompleted: {
        root.scene = root.target.Window.contentItem;
        root.before = root.target.Window.activeFocusItem;
        repeater.itemAt(0).forceActiveFocus();
    }
    Keys.onEscapePressed: root.finish()
    Keys.onDownPressed: root.move(1)
    Keys.onUpPressed: root.move(-1)

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onPressed: root.finish()
        onWheel: wheel => wheel.accepted = true
    }

    RoundedBox {
        id: panel

        readonly property point below: root.scene
            ? root.target.mapToItem(root.scene, root.target.width - width, root.target.height + 4) : Qt.point(0, 0)
        readonly property bool flipped: root.scene !== null && below.y + height > root.scene.height - 24

        x: Math.round(below.x)
        y: Math.round(flipped ? below.y - root.target.height - height - 8 : below.y)
        width: column.width + 8
        height: column.height + 8
        radius: 10
        color: Theme.popover
        edge: 1
        edgeColor: Theme.at("white", 0.14)

        Column {
            id: column

            x: 4
            y: 4

            Repeater {
                id: repeater

                model: root.entries

                ButtonBase {
                    id: entry

                    required property string modelData
                    required property int index

                    label: modelData
                    ringed: false
                    onHoveredChanged: {
                        if (hovered)
                            forceActiveFocus();
                    }
                    width: Math.max(136, words.implicitWidth + 24)
                    height: 28
                    Accessible.role: Accessible.MenuItem
                    onClicked: {
                        root.chosen(entry.index);
                        root.finish();
                    }

                    Rectangle {
                        anchors.fill: parent
                        radius: 6
                        color: Theme.at("white", entry.pressed ? 0.24 : entry.activeFocus ? 0.16 : 0)
                    }
                    PlainText {
                        id: words

                        x: 12
                        anchors.verticalCenter: parent.verticalCenter
                        words: entry.modelData
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
