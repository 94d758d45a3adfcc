import QtQuick

/// The buttons of a dialog, at its right.
Item {
    id: root

    default property alias buttons: row.data

    implicitHeight: row.height + 24

    Row {
        id: row

        anchors.right: parent.right
        anchors.rightMargin: 12
        y: 8
        spacing: 8
    }
}
