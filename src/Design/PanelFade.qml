import QtQuick
import Velto.Design

/// Lets what scrolls below it fade into the open panel's background.
Rectangle {
    id: root

    /// Clear at the top and full at the bottom, or the other way round.
    property bool upwards: false
    /// The y of its upper edge in the panel, and the panel's height.
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
