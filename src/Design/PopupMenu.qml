import QtQuick
import Velto.Design

/// A small menu over everything else in the window, at a control. Arrows move, Return chooses, Escape and a press elsewhere
/// close it; who had the keyboard before has it again then. Made when it is wanted.
Item {
    id: root

    required property Item target
    /// What it offers, in order.
    required property list<string> entries
    property list<string> keys: []
    /// Where it opens in the window, instead of at the control.
    property var place: null

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
    Component.onCompleted: {
        root.scene = root.target.Window.contentItem;
        root.before = root.target.Window.activeFocusItem;
        list.enter();
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onPressed: root.finish()
        onWheel: wheel => wheel.accepted = true
    }

    RoundedBox {
        id: panel

        readonly property point below: !root.scene ? Qt.point(0, 0) : root.place
            ? Qt.point(Math.min(root.place.x, root.scene.width - width - 24), Math.min(root.place.y, root.scene.height - height - 24))
            : root.target.mapToItem(root.scene, root.target.width - width, root.target.height + 4)
        readonly property bool flipped: root.scene !== null && below.y + height > root.scene.height - 24

        x: Math.round(below.x)
        y: Math.round(flipped ? below.y - root.target.height - height - 8 : below.y)
        width: list.width + 8
        height: list.height + 8
        radius: 10
        color: Theme.popover
        edge: 1
        edgeColor: Theme.at("white", 0.14)

        MenuEntries {
            id: list

            x: 4
            y: 4
            width: implicitWidth
            height: implicitHeight
            entries: root.entries
            keys: root.keys
            onDismissed: root.finish()
            onChosen: index => {
                root.chosen(index);
                root.finish();
            }
        }
    }
}
