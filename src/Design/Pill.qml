import QtQuick
import Velto.Design

/// The answer or the action at the end of a Peek's row.
ButtonBase {
    id: root

    required property string text
    required property color tone

    label: root.text
    corner: root.height / 2
    implicitWidth: title.implicitWidth + 18
    implicitHeight: title.implicitHeight + 6

    Rectangle {
        anchors.fill: parent
        radius: root.height / 2
        color: Theme.at(root.tone, root.pressed ? 0.42 : root.hovered ? 0.32 : Theme.snapshotRendering ? 0.25 : 0.22)
    }

    PlainText {
        id: title

        x: 9
        anchors.verticalCenter: parent.verticalCenter
        width: root.width - 18
        words: root.text
        size: Theme.textSmall
        weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
}
