import QtQuick

/// The buttons of a dialog, aligned to the right.
Item {
    id: root

    default property alias buttons: row.data

    implicitHeight: row.height + 30

    Row {
        id: row

        anchors.right: parent.right
        anchors.rightMargin: 20
        y: 12
        spacing: 8
    }
}
