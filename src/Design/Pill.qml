import QtQuick
import Velto.Design

/// The answer or the action at the end of a Peek's row.
ButtonBase {
    id: root

    required property string text
    required property color tone
    readonly property int padding: Math.round(4 + 5 * Theme.textScale)

    label: root.text
    corner: root.height / 2
    implicitWidth: title.implicitWidth + 2 * root.padding
    implicitHeight: title.implicitHeight + 6

    RoundedBox {
        anchors.fill: parent
        radius: root.height / 2
        color: Theme.at(root.tone, root.pressed ? 0.42 : root.hovered ? 0.32 : Theme.snapshotRendering ? 0.25 : 0.22)
        edge: Theme.cardEdge
        edgeColor: root.tone
    }

    PlainText {
        id: title

        x: root.padding
        anchors.verticalCenter: parent.verticalCenter
        width: root.width - 2 * root.padding
        words: root.text
        size: Theme.textSmall
        weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
}
