pragma ComponentBehavior: Bound

import QtQuick
import Velto.Connect
import Velto.Design

// A heading over the tiles of its modules, in two columns.
Column {
    id: root

    required property string heading
    required property var model
    required property ConnectSource source

    spacing: Math.round(4 * Theme.textScale)

    SectionLabel {
        text: root.heading
        bottomPadding: Math.round(2 * Theme.textScale)
    }
    Grid {
        id: grid

        readonly property real half: (root.width - (columns - 1) * spacing) / columns

        columns: root.width < 560 * Theme.textScale ? 1 : 2
        spacing: Theme.gap

        Repeater {
            model: root.model

            ModuleTile {
                width: grid.half
                height: implicitHeight
                onWanted: on => root.source.set(module, on)
                onActed: root.source.act(module)
            }
        }
    }
}
