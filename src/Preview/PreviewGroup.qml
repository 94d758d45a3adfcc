pragma ComponentBehavior: Bound

import QtQuick
import Velto.Design
import Velto.Home

// A heading over rows of made-up content.
Column {
    id: root

    required property string heading
    required property list<color> tones
    required property var items

    width: parent?.width ?? 0
    spacing: 4

    PlainText {
        text: root.heading
        size: Theme.textTiny
        weight: Font.DemiBold
        color: Theme.glassSecondary
        font.letterSpacing: 0.8
        bottomPadding: 2
    }
    Repeater {
        model: root.items.length

        BriefRow {
            required property int index
            readonly property var item: root.items[index]

            width: root.width
            itemId: ""
            symbol: item.symbol
            tone: item.tone
            title: item.title
            detail: item.detail
            from: ""
            actionLabel: item.action
            tones: root.tones
        }
    }
}
