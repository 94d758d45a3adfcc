import QtQuick
import Velto.Design
import Velto.Settings

/// A group of rows on one card, under its heading.
Column {
    id: root

    property string title
    property string footer
    default property alias rows: column.data

    width: parent?.width ?? 0
    spacing: 6

    FormHeading {
        visible: root.title !== ""
        text: root.title
    }
    RoundedBox {
        width: parent.width
        height: column.height
        radius: 8
        color: root.palette.base
        edge: 1
        edgeColor: Qt.alpha(root.palette.windowText, 0.12)

        Column {
            id: column

            width: parent.width
        }
    }
    FormText {
        visible: root.footer !== ""
        width: parent.width
        text: root.footer
        quiet: true
    }
}
