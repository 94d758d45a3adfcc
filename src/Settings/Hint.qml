import QtQuick
import Velto.Design
import Velto.Settings

/// A symbol and a hint.
Item {
    id: root

    required property string symbol
    required property string text

    width: parent?.width ?? 0
    implicitHeight: words.implicitHeight

    Item {
        width: 18 * words.growth
        height: parent.height

        Symbol {
            anchors.centerIn: parent
            name: root.symbol
            size: 12 * words.growth
            color: root.palette.highlight
        }
    }
    FormText {
        id: words

        x: 28 * words.growth
        width: parent.width - x
        text: root.text
    }
}
