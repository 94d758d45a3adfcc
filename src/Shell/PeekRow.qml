import QtQuick
import Velto.Design
import Velto.Shell

// The line that slid out. A press on it acts; a question has two pills.
Item {
    id: root

    required property PeekLine line
    required property UI ui

    readonly property list<color> tones: [Theme.mint, Theme.amber, Theme.coral, Theme.ice]
    readonly property color tone: root.tones[root.line.tone]

    Accessible.role: Accessible.Button
    Accessible.name: Plain.line(root.line.spoken)
    Accessible.description: root.line.hint
    Accessible.onPressAction: {
        root.line.pressBegan();
        root.line.act();
    }
    Component.onCompleted: symbol.bounce()

    HoverHandler {
        enabled: root.line.isQuestion && root.line.onShow
        onHoveredChanged: root.ui.questionHovered(hovered)
    }
    TapHandler {
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onPressedChanged: {
            if (pressed)
                root.line.pressBegan();
        }
        onTapped: root.line.act()
    }

    Connections {
        target: root.line
        function onReplaced(): void {
            symbol.bounce();
        }
    }

    Symbol {
        id: symbol

        x: 22
        anchors.verticalCenter: parent.verticalCenter
        name: root.line.symbol
        color: root.tone
    }

    QuestionLine {
        anchors.left: symbol.right
        anchors.leftMargin: 9
        anchors.right: tail.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        visible: root.line.inParts
        longestName: root.width / 3
        line: root.line
        unfolded: root.ui.unfolded
    }
    Row {
        anchors.left: symbol.right
        anchors.leftMargin: 9
        anchors.right: tail.left
        anchors.rightMargin: tail.width > 0 ? 12 : 8
        anchors.verticalCenter: parent.verticalCenter
        visible: !root.line.inParts
        spacing: 10

        PlainText {
            id: text

            width: Math.min(implicitWidth, parent.width - (beside.visible ? beside.width + parent.spacing : 0))
            words: root.line.text
            elide: Text.ElideMiddle
            color: "white"
            size: 13
            weight: Font.Medium
            Accessible.ignored: true
        }
        PlainText {
            id: beside

            anchors.baseline: text.baseline
            // What has happened comes first.
            width: Math.min(implicitWidth, root.width / 3, Math.max(parent.width / 5, parent.width - text.implicitWidth - parent.spacing))
            visible: root.line.beside !== ""
            words: root.line.beside
            color: Theme.glassSecondary
            size: Theme.textSmall
            Accessible.ignored: true
        }
    }

    Row {
        id: tail

        anchors.right: parent.right
        anchors.rightMargin: symbol.x
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.line.waiting !== "" && !root.line.isQuestion
            words: root.line.waiting
            color: Theme.at(Theme.amber, 0.85)
            size: 10
            weight: Font.Medium
        }
        AnswerPills {
            visible: root.line.isQuestion
            line: root.line
            tone: root.tone
        }
        Pill {
            visible: !root.line.isQuestion && root.line.actionLabel !== ""
            text: root.line.actionLabel
            tone: root.tone
            onPressBegan: root.line.pressBegan()
            onClicked: root.line.act()
        }
    }
}
