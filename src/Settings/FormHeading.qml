import QtQuick
import Velto.Settings

/// What stands over a group. Its own item, since a label is never more than a label to a screen reader.
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
