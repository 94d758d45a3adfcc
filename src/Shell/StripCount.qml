import QtQuick
import Velto.Design
import Velto.Shell

// A dot and a number beside the housing. It lights up for a moment when the number changes.
Item {
    id: root

    required property int value
    property bool shown: true
    property bool live: false
    property color dotColor: Theme.mint
    /// In place of the dot.
    property string symbol
    property string suffix

    implicitWidth: content.width
    implicitHeight: content.height
    visible: root.shown

    onValueChanged: {
        if (root.shown && !Theme.reducedMotion)
            flash.restart();
    }

    property real lit: 0

    SequentialAnimation {
        id: flash

        NumberAnimation {
            target: root
            property: "lit"
            to: 1
            duration: 150
            easing.type: Easing.OutQuad
        }
        PauseAnimation {
            duration: 750
        }
        NumberAnimation {
            target: root
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
        opacity: root.lit
        visible: root.lit > 0
    }

    Row {
        id: content

        spacing: 5
        scale: 1 + 0.08 * root.lit

        LiveDot {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.live
            color: root.dotColor
            live: root.live && root.visible
        }
        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            visible: !root.live && root.symbol === ""
            width: 6
            height: 6
            radius: 3
            color: root.dotColor
        }
        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            size: 11
            grows: false
            color: Theme.at("white", 0.85)
        }
        Row {
            anchors.verticalCenter: parent.verticalCenter
            anchors.alignWhenCentered: false
            spacing: 1

            RollingNumber {
                id: number

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
