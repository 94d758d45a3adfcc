import QtQuick
import QtQuick.Controls.Fusion

/// The text field of a window.
TextField {
    id: root

    implicitHeight: Math.round(contentHeight + 12)
    leftPadding: 10
    rightPadding: 10
    verticalAlignment: TextInput.AlignVCenter
    selectByMouse: true

    background: Rectangle {
        radius: 6
        color: root.palette.base
        border.width: root.activeFocus ? 2 : 1
        border.color: root.activeFocus ? root.palette.highlight : Qt.alpha(root.palette.windowText, 0.25)
    }
}
