import QtQuick
import QtQuick.Controls.Fusion

/// A button of a window.
Button {
    id: root

    property bool destructive: false
    readonly property color ink: root.destructive ? (root.palette.active.window.hslLightness > 0.5 ? "#c62f28" : "#ff6b61")
                                                  : root.highlighted ? root.palette.active.highlightedText : root.palette.active.buttonText

    /// The desktop's link colour, made dark or light enough to be readable.
    readonly property color linkInk: root.palette.active.window.hslLightness > 0.5 ? Qt.darker(root.palette.active.highlight, 1.5)
                                                                                   : Qt.lighter(root.palette.active.highlight, 1.4)

    function press(): void {
        if (root.enabled)
            root.clicked();
    }

    implicitWidth: Math.ceil(contentItem.implicitWidth) + leftPadding + rightPadding // whole, for sharp edges
    implicitHeight: Math.round(contentItem.implicitHeight + 12)
    leftPadding: 14
    rightPadding: 14
    Accessible.role: Accessible.Button
    Accessible.name: root.text.replace(/&&/g, "&")
    Accessible.ignored: !root.visible
    Accessible.onPressAction: root.press()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    // Faded as a whole, from the colours of an enabled one: only some versions have palettes that fade disabled controls.
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
        color: root.flat ? root.linkInk : root.ink
        Accessible.ignored: true
    }
}
