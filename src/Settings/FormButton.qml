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
    Accessible.name: root.text.replace(/&&/g, "&")
    Accessible.ignored: !root.visible
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    opacity: root.enabled ? 1 : 0.5

    background: FormFrame {
        control: root
        filled: root.highlighted
        flat: root.flat
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
