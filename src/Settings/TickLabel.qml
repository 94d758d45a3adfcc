import QtQuick
import Velto.Settings

/// The label of a check box, and a note after it.
Item {
    id: root

    required property real indent
    required property string label
    required property string note

    readonly property real room: root.width - root.indent
    /// Whether the note is below the label, because there is no room beside it.
    readonly property bool under: root.note !== "" && words.implicitWidth + 10 + behind.implicitWidth > root.room

    implicitHeight: (root.under ? words.height + behind.height + 2 : words.implicitHeight) + 2

    FormText {
        id: words

        x: root.indent
        y: root.under ? 1 : (root.height - height) / 2
        width: Math.min(implicitWidth, root.room)
        text: root.label
        Accessible.ignored: true
    }
    FormText {
        id: behind

        x: root.under ? root.indent : words.x + words.width + 10
        y: root.under ? words.y + words.height + 2 : (root.height - height) / 2
        width: root.width - x
        visible: root.note !== ""
        text: root.note
        quiet: true
        Accessible.ignored: true
    }
}
