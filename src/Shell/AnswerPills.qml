import QtQuick
import Velto.Design
import Velto.Shell

// The two answers to the question on show. Left and Right move between them.
Row {
    id: root

    required property PeekLine line
    required property color tone

    /// Whether one of them has the keyboard focus.
    readonly property bool focused: deny.activeFocus || allow.activeFocus

    function choose(allowed: bool): void {
        (allowed ? allow : deny).forceActiveFocus(Qt.TabFocusReason);
    }

    spacing: Math.round(4 + 4 * Theme.textScale)
    Keys.onLeftPressed: root.choose(false)
    Keys.onRightPressed: root.choose(true)

    Pill {
        id: deny

        text: qsTr("Deny")
        tone: root.tone
        label: qsTr("Deny: %1").arg(Plain.line(root.line.spoken))
        onPressBegan: root.line.pressBegan()
        onClicked: root.line.answer(false)
    }
    Pill {
        id: allow

        text: qsTr("Allow")
        tone: root.tone
        label: qsTr("Allow: %1").arg(Plain.line(root.line.spoken))
        onPressBegan: root.line.pressBegan()
        onClicked: root.line.answer(true)
    }
}
