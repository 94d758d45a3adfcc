pragma ComponentBehavior: Bound

import QtQuick
import Velto.Design

/// A menu's entries, one below the other. Arrow keys move, Return and Space choose, Escape leaves.
FocusScope {
    id: root

    /// In order; an empty one is a separator.
    required property list<string> entries
    /// The shortcut shown beside each of them.
    property list<string> keys: []
    property real widest: 136
    /// Whether the focus shows.
    property bool lit: true

    signal chosen(int index)
    signal dismissed

    implicitWidth: root.widest
    implicitHeight: column.height
    focus: true
    Keys.onEscapePressed: root.dismissed()
    Keys.onDownPressed: root.move(1)
    Keys.onUpPressed: root.move(-1)

    function enter(lit: bool): void {
        root.lit = lit;
        if (repeater.count > 0)
            repeater.itemAt(0).forceActiveFocus();
    }
    function move(step: int): void {
        if (!root.lit) {
            root.lit = true;
            return;
        }
        const count = repeater.count;
        let at = step > 0 ? -1 : count;
        for (let i = 0; i < count; ++i) {
            if (repeater.itemAt(i).activeFocus)
                at = i;
        }
        do
            at = (at + step + count) % count;
        while (root.entries[at] === "");
        repeater.itemAt(at).forceActiveFocus();
    }

    Column {
        id: column

        width: parent.width

        Repeater {
            id: repeater

            model: root.entries

            ButtonBase {
                id: entry

                required property string modelData
                required property int index
                readonly property bool isLine: modelData === ""
                readonly property string key: index < root.keys.length ? root.keys[index] : ""

                label: modelData
                ringed: false
                takesReturn: root.lit
                enabled: !isLine
                activeFocusOnTab: !isLine
                width: column.width
                height: isLine ? 9 : words.implicitHeight + Math.round(13 * Theme.textScale)
                Accessible.role: isLine ? Accessible.Separator : Accessible.MenuItem
                Accessible.description: key
                onHoveredChanged: {
                    if (!hovered)
                        return;
                    root.lit = true;
                    forceActiveFocus();
                }
                onActiveFocusChanged: root.lit = root.lit || (activeFocus && index > 0)
                onClicked: root.chosen(entry.index)
                Component.onCompleted: root.widest = Math.max(root.widest, words.implicitWidth + 2 * words.x + (beside.text === "" ? 0 : beside.implicitWidth + 2 * words.x))

                RoundedBox {
                    anchors.fill: parent
                    visible: !entry.isLine && (entry.pressed || (entry.activeFocus && root.lit))
                    radius: 6
                    color: Theme.at("white", entry.pressed ? 0.18 : 0.1)
                    edge: Theme.cardEdge
                    edgeColor: "white"
                }
                Separator {
                    visible: entry.isLine
                    x: Theme.paddingCard
                    y: 4
                    width: parent.width - 2 * x
                    ink: Theme.at("white", 0.16)
                }
                PlainText {
                    id: words

                    x: Theme.paddingCard
                    anchors.verticalCenter: parent.verticalCenter
                    words: entry.modelData
                    Accessible.ignored: true
                }
                PlainText {
                    id: beside

                    anchors.right: parent.right
                    anchors.rightMargin: Theme.paddingCard
                    anchors.verticalCenter: parent.verticalCenter
                    text: entry.key
                    size: Theme.textSmall
                    color: Theme.glassSecondary
                    Accessible.ignored: true
                }
            }
        }
    }
}
