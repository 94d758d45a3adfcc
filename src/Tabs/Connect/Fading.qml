import QtQuick
import Velto.Design

// Fades its content in; when hidden, it disappears at once.
Item {
    id: root

    required property bool shown
    default property alias content: holder.data

    visible: root.shown
    implicitHeight: holder.childrenRect.height
    opacity: root.shown ? 1 : 0

    Behavior on opacity {
        enabled: root.shown

        NumberAnimation {
            duration: Theme.fadeDuration
        }
    }

    Item {
        id: holder

        width: parent.width
        height: childrenRect.height
    }
}
