pragma ComponentBehavior: Bound

import QtQuick
import Velto.Design

/// A short text whose digits have slots of equal width, so that nothing shifts while a number counts.
Row {
    id: root

    required property string value
    property color color: Theme.glassPrimary
    property int size: Theme.textSmall
    property int weight: Font.Medium
    property bool grows: true
    readonly property int pixels: Math.round(root.size * (root.grows ? Theme.textScale : 1))
    readonly property real slot: Math.round(zero.advanceWidth * Screen.devicePixelRatio) / Screen.devicePixelRatio

    anchors.alignWhenCentered: false
    anchors.verticalCenterOffset: Theme.capitalsDrop(root.pixels, root.height)
    Accessible.role: Accessible.StaticText
    Accessible.name: root.value

    TextMetrics {
        id: zero

        font.family: Theme.family
        font.pixelSize: root.pixels
        font.weight: root.weight
        text: "0"
    }

    Repeater {
        model: root.value.length

        PlainText {
            required property int index
            readonly property string character: root.value.charAt(index)

            width: character >= "0" && character <= "9" ? root.slot : implicitWidth
            text: character
            color: root.color
            grows: root.grows
            size: root.size
            weight: root.weight
            elide: Text.ElideNone
            horizontalAlignment: Text.AlignHCenter
            Accessible.ignored: true
        }
    }
}
