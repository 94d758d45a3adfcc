import QtQuick
import Velto.Design

/// One row of the gallery: the name of a primitive and, beside it, its states.
Row {
    id: root

    required property string name
    default property alias states: content.data

    spacing: 16

    PlainText {
        width: 124
        text: root.name
        size: Theme.textSmall
        color: Theme.glassTertiary
        horizontalAlignment: Text.AlignRight
        topPadding: 4
    }
    Row {
        id: content

        spacing: 12
    }
}
