import QtQuick
import Velto.Design

/// A rounded card around its content, which is aligned to the top left. With `interactive` the whole card is one button.
Item {
    id: root

    default property alias content: column.data
    property alias spacing: column.spacing
    property color tint: "white"
    property bool interactive: false
    /// What a screen reader says about an interactive card.
    property string label

    signal clicked

    implicitWidth: column.implicitWidth + 2 * Theme.paddingCard
    implicitHeight: column.implicitHeight + 2 * Theme.paddingCard

    RoundedBox {
        anchors.fill: parent
        radius: Theme.radiusCard
        edge: Theme.cardEdge
        edgeColor: "white"
        color: Theme.at(root.tint, button.pressed ? 0.16 : button.hovered ? 0.11 : 0.08)
    }

    ButtonBase {
        id: button

        anchors.fill: parent
        visible: root.interactive
        available: root.interactive
        label: root.label
        corner: Theme.radiusCard
        onClicked: root.clicked()
    }

    Column {
        id: column

        x: Theme.paddingCard
        y: Theme.paddingCard
        width: root.width - 2 * Theme.paddingCard
        spacing: 6
    }
}
