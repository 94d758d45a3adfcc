import QtQuick
import Velto.Design
import Velto.Shell

// The question on show, in the open panel. The focus goes to the bar itself first, where Return answers nothing; Tab or an
// arrow key moves on to the answers.
Item {
    id: root

    required property PeekLine line
    required property UI ui

    readonly property bool asks: root.line.onShow && root.line.isQuestion
    readonly property bool here: root.activeFocus || pills.focused
    readonly property real barHeight: Math.round(38 + 20 * (Theme.textScale - 1))

    // For the keys of the panel and the order of its controls.
    readonly property bool comesFirst: true
    readonly property bool takesReturn: true
    readonly property bool keepsKeys: true

    visible: root.asks
    height: root.barHeight + (unfolded.visible ? Math.min((unfolded.item as UnfoldedQuestion).wanted, unfolded.height) : 0)
    activeFocusOnTab: true
    Accessible.role: Accessible.Grouping
    Accessible.name: Plain.line(root.line.spoken)
    Accessible.description: (root.line.told === "" ? "" : root.line.told + "\n") + qsTr("Tab goes on to Deny and Allow")
    Accessible.focusable: true
    Keys.onRightPressed: pills.choose(false)
    Keys.onLeftPressed: pills.choose(true)
    Keys.onPressed: event => {
        const step = event.key === Qt.Key_Down ? 30 : event.key === Qt.Key_Up ? -30 : event.key === Qt.Key_PageDown ? 200 : event.key === Qt.Key_PageUp ? -200 : 0;
        const whole = unfolded.item as UnfoldedQuestion;
        if (step === 0 || !whole)
            return;
        event.accepted = true;
        whole.scroll(step);
    }
    onHereChanged: root.ui.holdUnfolded(root.here)
    onVisibleChanged: {
        if (!root.visible)
            root.ui?.questionHovered(false); // while the bar is made, it may not have been given yet
    }

    // Another question took its place: a key about to be pressed wasn't meant for it.
    Connections {
        target: root.line
        function onReplaced(): void {
            if (pills.focused)
                root.forceActiveFocus(Qt.OtherFocusReason);
        }
    }

    HoverHandler {
        onHoveredChanged: root.ui.questionHovered(hovered)
    }

    RoundedBox {
        anchors.fill: parent
        radius: 12
        color: Theme.popover
        edge: 1
        edgeColor: Theme.at(Theme.amber, 0.4)
    }
    Symbol {
        id: symbol

        x: Theme.paddingCard
        y: (root.barHeight - height) / 2
        name: root.line.symbol
        color: Theme.amber
    }
    QuestionLine {
        anchors.left: symbol.right
        anchors.leftMargin: 10
        anchors.right: pills.left
        anchors.rightMargin: 12
        y: (root.barHeight - height) / 2
        longestName: root.width / 3
        line: root.line
        unfolded: root.ui.unfolded
    }
    AnswerPills {
        id: pills

        anchors.right: parent.right
        anchors.rightMargin: Theme.paddingCard
        y: (root.barHeight - height) / 2
        line: root.line
        tone: Theme.amber
    }
    Item {
        y: root.barHeight
        width: root.width
        height: root.height - y
        clip: true

        Loader {
            id: unfolded

            readonly property bool wanted: root.ui.unfolded && root.visible && root.ui.expanded

            // On a whole device pixel.
            x: Math.round((root.x + Theme.paddingCard) * Screen.devicePixelRatio) / Screen.devicePixelRatio - root.x
            width: root.width - Theme.paddingCard - x
            height: Math.min(320 * Theme.textScale, root.parent.height - root.y - root.barHeight - 82)
            visible: wanted && item !== null
            onWantedChanged: {
                if (wanted)
                    setSource("UnfoldedQuestion.qml", {
                        line: root.line,
                        ui: root.ui,
                        takesKeyboard: true,
                        ground: Theme.popover
                    });
                else
                    source = "";
            }
        }
    }
    FocusRing {
        corner: 12
        visible: root.activeFocus
        z: 1
    }
}
