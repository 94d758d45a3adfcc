import QtQuick
import QtQuick.Controls.Fusion

/// A switch that shows what is, and asks for what is wanted: where the wish isn't met it goes back.
Switch {
    id: root

    required property string label
    required property bool on

    signal wanted(bool on)

    padding: 0
    spacing: 0
    checked: root.on
    Accessible.name: root.label
    onToggled: {
        const wish = root.checked;
        root.checked = Qt.binding(() => root.on);
        root.wanted(wish);
    }

    indicator: Rectangle {
        implicitWidth: 38
        implicitHeight: 22
        x: root.leftPadding
        y: (root.height - height) / 2
        radius: height / 2
        color: root.checked ? root.palette.highlight : Qt.alpha(root.palette.windowText, 0.22)

        Behavior on color {
            ColorAnimation {
                duration: 120
            }
        }
        Rectangle {
            x: root.checked ? parent.width - width - 2 : 2
            y: 2
            width: 18
            height: 18
            radius: 9
            color: "white"

            Behavior on x {
                NumberAnimation {
                    duration: 120
                    easing.type: Easing.OutQuad
                }
            }
        }
        Rectangle {
            anchors.fill: parent
            anchors.margins: -3
            visible: root.visualFocus
            radius: height / 2
            color: "transparent"
            border.width: 2
            border.color: root.palette.highlight
        }
    }
}
