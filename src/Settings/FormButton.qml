import QtQuick
import QtQuick.Controls.Fusion

/// A button of a window.
Button {
    id: root

    property bool destructive: false
    readonly property color ink: root.destructive ? (root.palette.window.hslLightness > 0.5 ? "#c62f28" : "#ff6b61")
                                                  : root.highlighted ? root.palette.highlightedText : root.palette.buttonText

    implicitHeight: Math.round(contentItem.implicitHeight + 12)
    leftPadding: 14
    rightPadding: 14
    opacity: root.enabled ? 1 : 0.5

    background: Rectangle {
        radius: 6
        color: root.highlighted ? Qt.darker(root.palette.highlight, root.down ? 1.15 : root.hovered ? 1.06 : 1)
                                : Qt.alpha(root.palette.windowText, root.down ? 0.16 : root.hovered ? 0.11 : root.flat ? 0 : 0.07)
        border.width: root.flat || root.highlighted ? 0 : 1
        border.color: Qt.alpha(root.palette.windowText, 0.14)

        Rectangle {
            anchors.fill: parent
            anchors.margins: -2
            visible: root.visualFocus
            radius: 8
            color: "transparent"
            border.width: 2
            border.color: root.palette.highlight
        }
    }
    contentItem: FormText {
        text: root.text.replace(/&&/g, "&")
        wrapMode: Text.NoWrap
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: root.flat ? root.palette.link : root.ink
        Accessible.ignored: true
    }
}
