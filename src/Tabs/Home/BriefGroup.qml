pragma ComponentBehavior: Bound

import QtQuick
import Velto.Design
import Velto.Home

// A heading above its rows; hidden without rows.
Column {
    id: root

    required property string heading
    required property var model
    required property list<color> tones

    readonly property alias count: items.count

    signal chosen(string id)

    function rowAt(index: int): BriefRow {
        return items.itemAt(index) as BriefRow;
    }

    visible: items.count > 0
    spacing: Math.round(4 * Theme.textScale)

    SectionLabel {
        text: root.heading
        bottomPadding: Math.round(2 * Theme.textScale)
    }
    Repeater {
        id: items

        model: root.model

        BriefRow {
            width: root.width
            tones: root.tones
            onChosen: root.chosen(itemId)
        }
    }
}
