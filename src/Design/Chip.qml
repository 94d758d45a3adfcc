import QtQuick
import Velto.Design

/// A small fact: a symbol and a text in one colour, on a capsule tinted with it.
RoundedBox {
    id: root

    required property string text
    property string symbol
    property color tint: Theme.glassSecondary
    property real fill: 0.16
    /// The colour of symbol and text, readable wherever the chip scrolls to.
    property color ink: Theme.ink(root.tint, root.fill)

    implicitWidth: row.implicitWidth + 2 * row.x
    implicitHeight: Math.max(words.height, root.symbol !== "" ? picture.height : 0) + 2 * row.y // before the row is laid out
    radius: root.height / 2
    color: Theme.at(root.tint, root.fill)

    Row {
        id: row

        x: Math.round(8 * Theme.textScale)
        y: Math.round(3 * Theme.textScale)
        spacing: 4 * Theme.textScale

        Symbol {
            id: picture

            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            size: Theme.textSmall
            color: root.ink
        }
        PlainText {
            id: words

            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, 220 * Theme.textScale)
            words: root.text
            size: Theme.textSmall
            weight: Font.Medium
            elide: Text.ElideMiddle // a meeting's time stands at the end
            color: root.ink
        }
    }
}
