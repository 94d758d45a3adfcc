pragma ComponentBehavior: Bound

import QtQuick
import Velto.Design

// A number whose digits stand in slots of one width and roll when they change.
Row {
    id: root

    required property int value
    property color color: "white"
    property int pixelSize: 11

    readonly property string digits: String(root.value)

    anchors.alignWhenCentered: false
    anchors.verticalCenterOffset: Theme.capitalsDrop(root.pixelSize, root.height)
    Accessible.ignored: true

    TextMetrics {
        id: slot

        font.family: Theme.family
        font.pixelSize: root.pixelSize
        font.weight: Font.Medium
        text: "0"
    }

    Repeater {
        // From the right, so that a slot keeps its place value when the number grows.
        model: root.digits.length

        Item {
            id: place

            required property int index
            readonly property string digit: root.digits[index]
            property string before: digit
            property real turned: 1
            property bool complete: false

            width: Math.round(slot.advanceWidth * Screen.devicePixelRatio) / Screen.devicePixelRatio
            height: Math.ceil(slot.height)
            clip: turned < 1

            onDigitChanged: {
                // A 0 that wasn't shown doesn't roll.
                const shown = place.complete && (place.before !== "0" || root.digits.length > 1);
                if (Theme.reducedMotion || !shown) {
                    before = digit;
                    return;
                }
                turn.restart();
            }
            Component.onCompleted: place.complete = true

            NumberAnimation {
                id: turn

                target: place
                property: "turned"
                from: 0
                to: 1
                duration: Theme.springDuration
                easing: Theme.spring
                onFinished: place.before = place.digit
            }

            PlainText {
                anchors.horizontalCenter: parent.horizontalCenter
                y: -parent.height * place.turned
                opacity: 1 - place.turned
                visible: place.turned < 1
                text: place.before
                color: root.color
                size: root.pixelSize
                weight: Font.Medium
                grows: false
                renderType: Text.QtRendering
            }
            PlainText {
                anchors.horizontalCenter: parent.horizontalCenter
                y: parent.height * (1 - place.turned)
                opacity: place.turned
                text: place.digit
                color: root.color
                size: root.pixelSize
                weight: Font.Medium
                grows: false
                renderType: place.turned < 1 ? Text.QtRendering : Text.NativeRendering
            }
        }
    }
}
