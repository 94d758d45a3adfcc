import QtQuick
import Velto.Design
import Velto.Shell

// A dot and a number beside the housing. It lights up for a moment when the number changes.
StripItem {
    id: root

    required property int value
    property bool live: false
    property color dotColor: Theme.mint
    /// In place of the dot.
    property string symbol
    property string suffix

    signal lights

    // Once it is known whether what changed is shown, too.
    function light(): void {
        if (root.shown && !Theme.reducedMotion)
            root.lights();
    }

    onValueChanged: () => Qt.callLater(root.light)

    // With Qt 6.4 a Loader can't create a bound component.
    // qmllint disable unqualified
    sourceComponent: Item {
        id: count

        property real lit: 0

        implicitWidth: content.width
        implicitHeight: content.height

        Connections {
            target: root
            function onLights(): void {
                flash.restart();
            }
        }
        SequentialAnimation {
            id: flash

            NumberAnimation {
                target: count
                property: "lit"
                to: 1
                duration: 150
                easing.type: Easing.OutQuad
            }
            PauseAnimation {
                duration: 750
            }
            NumberAnimation {
                target: count
                property: "lit"
                to: 0
                duration: 600
                easing.type: Easing.InQuad
            }
        }

        Glow {
            anchors.centerIn: content
            width: content.width + 16
            height: content.height + 16
            color: Theme.at(Theme.ice, 0.6)
            opacity: count.lit
            visible: count.lit > 0
        }

        Row {
            id: content

            spacing: root.symbol === "" ? 4 : 5
            scale: 1 + 0.08 * count.lit

            LiveDot {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.symbol === ""
                color: root.dotColor
                live: root.live && root.visible
            }
            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.symbol !== "" && width + content.spacing + words.width <= root.room
                name: root.symbol
                size: 11
                grows: false
                color: Theme.at("white", 0.85)
            }
            Row {
                id: words

                anchors.verticalCenter: parent.verticalCenter
                anchors.alignWhenCentered: false
                spacing: 1

                RollingNumber {
                    anchors.verticalCenter: parent.verticalCenter
                    value: root.value
                    color: Theme.at("white", 0.85)
                }
                PlainText {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: root.suffix !== ""
                    text: root.suffix
                    size: 11
                    grows: false
                    weight: Font.Medium
                    color: Theme.at("white", 0.85)
                    Accessible.ignored: true
                }
            }
        }
    }
    // qmllint enable unqualified
}
