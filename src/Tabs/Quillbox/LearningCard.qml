import QtQuick
import Velto.Design
import Velto.Quillbox

// The question of the day, and its answer on request.
GlassCard {
    id: root

    required property QuillboxSource source

    function open(): void {
        const byKeys = button.activeFocus;
        root.source.openAnswer();
        if (byKeys)
            answer.forceActiveFocus(Qt.TabFocusReason);
    }

    spacing: 8

    Row {
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "graduationcap"
            color: Theme.ice
        }
        SectionLabel {
            topPadding: 0
            text: qsTr("Today's learning card")
        }
    }
    PlainText {
        width: parent.width
        visible: root.source.cardArea !== ""
        words: root.source.cardArea
        size: Theme.textSmall
        weight: Font.Medium
        color: Theme.glassTertiary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    PlainText {
        width: parent.width
        multiline: true
        words: root.source.cardQuestion
        size: Theme.textTitle
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Item {
        id: answer

        readonly property bool shown: root.source.cardAnswer !== ""

        // Room for the focus ring around the words, which are aligned with the question.
        x: -6
        width: parent.width + 12
        height: answer.shown ? answerText.implicitHeight + 8 : 0
        visible: height > 0
        clip: true
        opacity: answer.shown ? 1 : 0
        activeFocusOnTab: true
        Accessible.role: Accessible.StaticText
        Accessible.name: answerText.text
        Accessible.focusable: true

        Behavior on height {
            Spring {}
        }
        Behavior on opacity {
            Spring {}
        }

        PlainText {
            id: answerText

            x: 6
            y: 4
            width: parent.width - 12
            multiline: true
            words: root.source.cardAnswer
            color: Theme.glassSecondary
            Accessible.ignored: true
        }
        FocusRing {
            anchors.margins: 0
            corner: 4
        }
    }
    PillButton {
        id: button

        visible: root.source.offersAnswer
        text: qsTr("Show the answer")
        onClicked: root.open()
    }
}
