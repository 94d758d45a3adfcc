import QtQuick
import Velto.Design

// A known background behind the panel, for judging its materials.
Rectangle {
    id: root

    required property string kind

    readonly property var stops: ({
            "light": ["#ffffff", "#eaf4f8"],
            "color": ["#522258", "#0d6280", "#d16b45"]
        }[root.kind] ?? ["#08090b", "#19242b"])

    width: 1000
    height: 700
    color: root.stops[0]
    clip: true

    // From corner to corner: a rotated stripe that covers the diagonal.
    Rectangle {
        anchors.centerIn: parent
        width: Math.hypot(root.width, root.height)
        height: width
        rotation: -Math.atan2(root.width, root.height) * 180 / Math.PI

        gradient: Gradient {
            GradientStop {
                position: 0
                color: root.stops[0]
            }
            GradientStop {
                position: root.stops.length === 3 ? 0.5 : 0
                color: root.stops.length === 3 ? root.stops[1] : root.stops[0]
            }
            GradientStop {
                position: 1
                color: root.stops[root.stops.length - 1]
            }
        }
    }
    PlainText {
        anchors.centerIn: parent
        words: "Material QA · " + root.kind
        size: 30
        weight: Font.DemiBold
        color: Theme.at("white", 0.45)
    }
}
