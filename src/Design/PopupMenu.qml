import QtQuick
import Velto.Design

/// A small menu above everything else in the window, next to `target`. Arrow keys move, Return chooses, Escape and a press
/// elsewhere close it; the focus returns to where it was. Created on demand.
Item {
    id: root

    required property Item target
    /// What it offers, in order.
    required property list<string> entries
    property list<string> keys: []
    /// Whether a key opened it: the entry with the focus is lit then, otherwise not before a key or the pointer has chosen one.
    property bool byKeys: true
    /// Where it opens in the window, instead of next to the target.
    property var place: null

    signal chosen(int index)
    signal closed

    /// See TabOrder.
    readonly property bool trapsFocus: true
    /// Set once: a binding would move this item out of a window that is being destroyed.
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
        (root.before ? root.before : root.target).forceActiveFocus();
        root.closed();
    }
    Component.onCompleted: {
        root.scene = root.target.Window.contentItem;
        root.before = root.target.Window.activeFocusItem;
        list.enter(root.byKeys);
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
