pragma ComponentBehavior: Bound

import QtQuick
import Velto.Connect
import Velto.Design

// Today's tokens, a bar for each hour.
GlassCard {
    id: root

    required property ConnectSource source

    spacing: 6

    Item {
        width: parent.width
        height: heading.height

        SectionLabel {
            id: heading

            text: qsTr("Claude usage today")
            topPadding: 0
        }
        PlainText {
            anchors.right: parent.right
            anchors.baseline: heading.baseline
            text: qsTr("at most %1 in an hour").arg(root.source.usageMost)
            size: Theme.textSmall
            color: Theme.glassTertiary
            Accessible.ignored: true
        }
    }
    Item {
        id: plot

        readonly property real slot: width / 24

        width: parent.width
        height: 72
        Accessible.role: Accessible.Chart
        Accessible.name: root.source.usageSpoken

        Repeater {
            model: 24

            Rectangle {
                required property int index
                readonly property real part: root.source.usageHours[index] ?? 0

                x: Math.round(index * plot.slot) + 1
                y: plot.height - height
                width: Math.max(2, Math.round(plot.slot) - 4)
                // An hour without tokens keeps a mark, so that its place is visible.
                height: Math.max(2, Math.round(part * plot.height))
                radius: Math.min(3, height / 2)
                color: part > 0 ? Theme.at(Theme.ice, 0.85) : Theme.at("white", 0.14)
            }
        }
    }
    Item {
        width: parent.width
        height: marks.implicitHeight

        Repeater {
            model: [0, 6, 12, 18]

            PlainText {
                required property int modelData

                x: Math.round(modelData * plot.slot) + 1
                text: modelData
                size: Theme.textTiny
                color: Theme.glassTertiary
                Accessible.ignored: true
            }
        }
        PlainText {
            id: marks

            anchors.right: parent.right
            text: "24"
            size: Theme.textTiny
            color: Theme.glassTertiary
            Accessible.ignored: true
        }
    }
}
