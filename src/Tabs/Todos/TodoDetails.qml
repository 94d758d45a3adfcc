pragma ComponentBehavior: Bound

import QtQuick
import Velto.Design
import Velto.Todos

// What an open row shows below its line: the notes, the comments, and the field to add one.
Column {
    id: root

    required property TodosSource source
    required property string todoId
    required property string title
    required property string details
    required property var comments
    /// What was typed before the row was scrolled away.
    required property string typed

    spacing: 8

    // Makes the height right at once.
    function settle(): void {
        said.forceLayout();
        root.forceLayout();
    }

    component Comment: Item {
        id: comment

        required property var modelData

        readonly property real stamp: when.implicitWidth

        width: root.width
        height: words.height
        Accessible.role: Accessible.StaticText
        Accessible.name: when.text + ", " + words.text

        PlainText {
            id: when

            width: said.stamps
            anchors.baseline: words.baseline
            words: comment.modelData.at
            size: Theme.textSmall
            color: Theme.glassSecondary
            Accessible.ignored: true
        }
        PlainText {
            id: words

            x: when.width + 8
            width: parent.width - x
            multiline: true
            words: comment.modelData.text
            Accessible.ignored: true
        }
    }

    PlainText {
        width: parent.width
        visible: root.details !== ""
        multiline: true
        words: root.details
        color: Theme.glassSecondary
        lineHeight: 1.1
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Column {
        id: said

        /// As wide as the longest of them.
        readonly property real stamps: {
            let widest = 136 * Theme.textScale;
            for (let index = 0; index < list.count; ++index)
                widest = Math.max(widest, (list.itemAt(index) as Comment)?.stamp ?? 0);
            return Math.min(widest, said.width / 2);
        }

        width: parent.width
        visible: root.comments.length > 0
        spacing: 5

        Repeater {
            id: list

            model: root.comments

            Comment {}
        }
    }
    Item {
        width: parent.width
        height: visible ? Theme.controlHeight : 0
        visible: root.source.canEdit

        TextInputField {
            id: field

            anchors.left: parent.left
            anchors.right: edit.left
            anchors.rightMargin: 8
            label: qsTr("Add a comment")
            prompt: qsTr("Add a comment")
            // Not bound: the store takes what is typed at once and doesn't report it back.
            Component.onCompleted: text = root.typed
            onEdited: text => root.source.shown.typeComment(root.todoId, text)
            onAccepted: {
                root.source.addComment(root.todoId, text);
                text = "";
            }
        }
        PillButton {
            id: edit

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Edit")
            label: qsTr("Edit: %1").arg(root.title.slice(0, 200))
            tint: "white"
            onClicked: root.source.edit(root.todoId)
        }
    }
}
