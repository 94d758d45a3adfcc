import QtQuick
import Velto.Design

/// Lets what scrolls below it fade into the ground of the open panel.
Rectangle {
    id: root

    /// Clear at the top and full at the bottom, or the other way round.
    property bool upwards: false
    /// Where the upper edge is in the panel, and how high the panel is.
    required property real place
    required property real whole

    readonly property color over: Theme.panelColor(root.place / Math.max(1, root.whole))
    readonly property color under: Theme.panelColor((root.place + root.height) / Math.max(1, root.whole))

    gradient: Gradient {
        GradientStop {
            position: 0
            color: Theme.at(root.over, root.upwards ? 0 : 1)
        }
        GradientStop {
            position: 1
            color: Theme.at(root.under, root.upwards ? 1 : 0)
        }
    }
}
