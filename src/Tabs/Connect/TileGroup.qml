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

        /// All tiles are as high as the one that says most.
        readonly property real tallest: {
            let most = 0;
            for (let index = 0; index < repeater.count; ++index)
                most = Math.max(most, repeater.itemAt(index)?.implicitHeight ?? 0);
            return most;
        }
        readonly property real half: (root.width - (columns - 1) * spacing) / columns

        columns: root.width < 560 * Theme.textScale ? 1 : 2
        spacing: Theme.gap

        Repeater {
            id: repeater

            model: root.model

            ModuleTile {
                width: grid.half
                height: grid.tallest
                onWanted: on => root.source.set(module, on)
                onActed: root.source.act(module)
            }
        }
    }
}
