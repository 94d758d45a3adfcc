import QtQuick
import Velto.Design

// One module: what it is, whether it's on, how it is doing, and what to do about it.
RoundedBox {
    id: root

    required property string module
    required property string symbol
    required property string label
    required property bool on
    required property string text
    required property bool ok
    required property string actionLabel

    /// See TabOrder.
    readonly property bool staysTogether: true

    readonly property real padding: Theme.paddingCard
    readonly property real above: Math.round(10 * Theme.textScale)

    signal wanted(bool on)
    signal acted

    implicitHeight: Math.max(80 * Theme.textScale, column.height + 2 * root.above)
    radius: Theme.radiusRow
    edge: Theme.cardEdge
    edgeColor: "white"
    color: root.on ? Theme.at(Theme.accent, 0.12) : Theme.at("white", 0.06)
    Accessible.role: Accessible.Grouping
    Accessible.name: root.label
    Accessible.description: root.text

    Column {
        id: column

        x: root.padding
        y: root.above
        width: parent.width - 2 * x
        spacing: 4

        Item {
            width: parent.width
            height: 22 * Theme.textScale

            Symbol {
                id: symbol

                anchors.verticalCenter: parent.verticalCenter
                name: root.symbol
                color: root.on ? Theme.accent : Theme.glassSecondary
            }
            PlainText {
                anchors.left: symbol.right
                anchors.leftMargin: Theme.gap
                anchors.right: toggle.left
                anchors.verticalCenter: parent.verticalCenter
                words: root.label
                size: Theme.textTitle
                weight: Font.Medium
                Accessible.ignored: true
            }
            SwitchField {
                id: toggle

                anchors.right: parent.right
                anchors.rightMargin: -12 // the visible switch ends where the tile's button does
                anchors.verticalCenter: parent.verticalCenter
                text: ""
                label: root.label
                checked: root.on
                onToggled: checked => root.wanted(checked)
            }
        }
        Item {
            width: parent.width
            // The text starts at the same height with and without a button.
            height: Math.max(words.y + words.implicitHeight, button.height)

            CodeText {
                id: words

                y: 4 * Theme.textScale
                width: parent.width - (button.visible ? button.width + root.padding : 0)
                maximumLineCount: 2
                elide: Text.ElideRight
                words: root.text
                size: Theme.textSmall
                color: root.on && !root.ok ? Theme.ink(Theme.orange) : Theme.glassSecondary
                Accessible.ignored: true // the tile's description
            }
            PillButton {
                id: button

                anchors.right: parent.right
                visible: root.actionLabel !== ""
                text: root.actionLabel
                label: root.actionLabel === "" ? root.label : root.actionLabel + ": " + root.label
                onClicked: root.acted()
            }
        }
    }
}
