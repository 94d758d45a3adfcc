import QtQuick
import Velto.Design

/// A symbol by its system name, centred in a square a little larger than the text beside it, since capitals and symbols look
/// level then. Drawn as still text; it may be scaled, and `bounce` shows that it has just appeared.
Text {
    id: root

    required property string name
    /// The size of the text that the symbol goes with.
    property real size: Theme.textTitle
    /// See PlainText.
    property bool grows: true

    function bounce(): void {
        if (!Theme.reducedMotion && !Theme.snapshotRendering)
            bouncing.restart();
    }

    width: font.pixelSize
    height: font.pixelSize

    text: Theme.glyph(root.name)
    color: Theme.glassPrimary
    textFormat: Text.PlainText
    renderType: root.scale === 1 ? Text.NativeRendering : Text.QtRendering
    font.family: Theme.symbolFamily
    font.pixelSize: Math.round(root.size * 1.25 * (root.grows ? Theme.textScale : 1))
    horizontalAlignment: Text.AlignHCenter
    anchors.alignWhenCentered: false
    Accessible.ignored: true

    SequentialAnimation {
        id: bouncing

        NumberAnimation {
            target: root
            property: "scale"
            to: 1.28
            duration: 140
            easing.type: Easing.OutQuad
        }
        NumberAnimation {
            target: root
            property: "scale"
            to: 1
            duration: 420
            easing.type: Easing.OutBack
            easing.overshoot: 2.2
        }
    }
}
