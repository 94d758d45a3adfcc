pragma ComponentBehavior: Bound

import QtQuick
import Velto.Design
import Velto.Shell

// The whole question, under its row: what would be done, line by line, and who asks. It scrolls, and builds only the rows in
// sight.
Item {
    id: root

    required property PeekLine line
    required property UI ui
    property bool takesKeyboard: false
    /// The colour behind it.
    property color ground: Theme.panelColor(0)

    /// The height that would show all of it, as far as known; 0 until then.
    readonly property real wanted: list.contentHeight > 0 ? list.contentHeight + 18 : 0

    function scroll(by: real): void {
        list.contentY = Math.max(list.originY, Math.min(list.originY + list.contentHeight - list.height, list.contentY + by));
    }

    Component.onCompleted: list.model = root.line.unfold()
    Component.onDestruction: root.line.fold()

    Separator {
        width: parent.width
        ink: Theme.at("white", 0.1)
    }
    ListView {
        id: list

        anchors.fill: parent
        anchors.topMargin: 9
        anchors.bottomMargin: 9
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        // A row that is still being built ahead of the scrolling when the question goes away makes the list warn.
        cacheBuffer: 0
        Accessible.role: Accessible.List
        Accessible.name: qsTr("The whole question")

        delegate: QuestionPiece {
            width: ListView.view.width
            takesKeyboard: root.takesKeyboard
        }
    }
    // The lower edge fades out, so that text that goes on doesn't look cut.
    Rectangle {
        readonly property real below: list.contentHeight + list.originY - list.contentY - list.height

        y: list.y + list.height - height
        width: parent.width
        height: 22
        visible: below > 0.5
        opacity: Math.min(1, below / height)
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Theme.at(root.ground, 0)
            }
            GradientStop {
                position: 1
                color: root.ground
            }
        }
    }
    // In the margin: if the lines made room for it, those that just fit would be wrapped, and have them make room, without end.
    ScrollThumb {
        anchors.left: parent.right
        anchors.leftMargin: -1
        y: list.y
        height: list.height
        area: list
    }
}
