import QtQuick
import Velto.Settings

/// The heading of a group. An item of its own, since to a screen reader a Label is only a label.
Item {
    id: root

    required property string text
    property alias font: words.font

    width: parent?.width ?? 0
    implicitHeight: words.implicitHeight
    Accessible.role: Accessible.Heading
    Accessible.name: root.text
    Accessible.ignored: !root.visible

    FormText {
        id: words

        width: parent.width
        text: root.text
        font.weight: Font.DemiBold
        Accessible.ignored: true
    }
}
