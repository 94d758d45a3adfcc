import QtQuick
import Velto.Design

/// A button with a symbol. Its label is its help text too.
ButtonBase {
    id: root

    required property string symbol
    /// Whether what the button switches is on.
    property bool on: false

    /// How far it reaches beyond its symbol, at each side.
    readonly property real overhang: Math.round((root.width - glyph.width) / 2)

    help: root.label
    implicitWidth: Math.round(30 * Theme.textScale)
    implicitHeight: Math.round(26 * Theme.textScale)

    RoundedBox {
        anchors.fill: parent
        radius: root.corner
        color: Theme.at("white", root.pressed ? 0.16 : root.hovered ? 0.1 : 0)
    }

    Symbol {
        id: glyph

        anchors.centerIn: parent
        name: root.symbol
        color: root.on ? Theme.accent : root.hovered ? Theme.glassPrimary : Theme.glassSecondary
    }
}
