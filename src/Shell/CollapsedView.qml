import QtQuick
import Velto.Design
import Velto.Shell

// The strip: one fact on each side of the housing, and the row that slides out under it.
Item {
    id: root

    required property UI ui
    required property CollapsedStrip strip
    required property PeekLine peekLine
    required property PanelOutline outline

    readonly property bool rowShown: root.peekLine.onShow || root.ui.hovering

    // Hover, taps and what a screen reader sees belong to the strip row alone, not to the row under it.
    Item {
        id: stripRow

        anchors.horizontalCenter: parent.horizontalCenter
        width: parent.width
        height: root.ui.velto.height

        Accessible.role: Accessible.Button
        Accessible.name: root.strip.spoken
        Accessible.description: qsTr("Opens Velto")
        Accessible.onPressAction: root.ui.toggle()

        HoverHandler {
            onHoveredChanged: {
                if (hovered)
                    root.ui.stripEntered();
            }
        }
        TapHandler {
            onTapped: root.ui.tapped()
        }
    }

    Item {
        id: facts

        anchors.horizontalCenter: parent.horizontalCenter
        width: root.ui.velto.width + 104
        height: root.ui.velto.height
        opacity: root.rowShown ? 0 : 1
        visible: opacity > 0

        // The black begins beside its flare.
        readonly property real flare: 6
        readonly property real margin: 3
        readonly property real side: (width - root.ui.velto.width) / 2 - flare

        // As wide as a side, or wider towards the middle for what needs more.
        function sideFor(content: real): real {
            return Math.max(facts.side, Math.ceil(content) + 2 * facts.margin);
        }

        Behavior on opacity {
            Spring {}
        }

        Item {
            x: facts.flare
            width: facts.sideFor(Math.max(leftFact.taken, due.taken))
            height: parent.height

            LiveDot {
                anchors.centerIn: parent
                visible: root.strip.left === CollapsedStrip.Recording
                diameter: 7
                color: Theme.red
                live: false
            }
            StripFact {
                id: leftFact

                anchors.centerIn: parent
                shown: root.strip.left === CollapsedStrip.Focus || root.strip.left === CollapsedStrip.Event
                room: root.outline.factRoom
                symbol: root.strip.left === CollapsedStrip.Focus ? "timer" : "calendar"
                text: root.strip.leftText
            }
            StripCount {
                id: due

                anchors.centerIn: parent
                shown: root.strip.left === CollapsedStrip.Todos
                room: root.outline.factRoom
                value: root.strip.todos
                symbol: "checklist"
                suffix: root.strip.overdue ? "!" : ""
            }
            StripCount {
                anchors.centerIn: parent
                shown: root.strip.left === CollapsedStrip.Running
                value: root.strip.running
                live: true
            }
        }
        Item {
            x: facts.width - width - facts.flare
            width: facts.sideFor(Math.max(waiting.taken, working.taken))
            height: parent.height

            StripCount {
                id: waiting

                anchors.centerIn: parent
                shown: root.strip.right === CollapsedStrip.Waiting
                value: root.strip.waiting
                dotColor: Theme.amber
            }
            StripCount {
                id: working

                anchors.centerIn: parent
                shown: root.strip.right === CollapsedStrip.Working
                value: root.strip.running
                live: true
            }
            StripFact {
                anchors.centerIn: parent
                shown: root.strip.right === CollapsedStrip.Playing
                symbol: "music.note"
            }
        }
    }

    // Built with the first Peek, so that the start doesn't wait for it.
    Loader {
        id: peekRow

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, root.outline.rowWidth)
        height: root.outline.rowHeight
        y: root.ui.velto.height + (root.peekLine.onShow || Theme.reducedMotion ? 0 : -height)
        opacity: root.peekLine.onShow ? 1 : 0
        visible: opacity > 0
        readonly property bool wanted: root.peekLine.serial > 0
        onWantedChanged: build()
        Component.onCompleted: build()

        function build(): void {
            if (wanted && status === Loader.Null)
                setSource("PeekRow.qml", {
                    line: root.peekLine,
                    ui: root.ui
                });
        }

        Behavior on y {
            Spring {}
        }
        Behavior on opacity {
            Spring {}
        }
    }

    // The whole question. It stays while the black closes over it.
    Loader {
        id: whole

        readonly property bool wanted: root.ui.unfolded && root.peekLine.inParts && root.peekLine.onShow && !root.ui.expanded
        readonly property real wantedHeight: item ? (item as UnfoldedQuestion).wanted : 0

        // From the row's symbol, on a whole device pixel, to the end of its answers.
        x: Math.round((peekRow.x + 22) * Screen.devicePixelRatio) / Screen.devicePixelRatio
        width: peekRow.x + peekRow.width - 22 - x
        height: root.outline.mostUnfolded // the black shows as much of it as is wanted
        y: peekRow.y + peekRow.height
        opacity: wanted ? 1 : 0
        visible: opacity > 0
        onWantedChanged: {
            if (wanted)
                setSource("UnfoldedQuestion.qml", {
                    line: root.peekLine,
                    ui: root.ui
                });
        }
        onVisibleChanged: {
            if (!visible && !wanted)
                source = "";
        }
        onWantedHeightChanged: root.ui.unfoldedHeight = whole.wantedHeight

        Behavior on opacity {
            Spring {}
        }
        HoverHandler {
            onHoveredChanged: root.ui.questionHovered(hovered)
        }
    }

    Loader {
        anchors.horizontalCenter: parent.horizontalCenter
        y: root.ui.velto.height
        width: Math.min(parent.width, root.outline.rowWidth)
        height: root.outline.rowHeight
        readonly property bool wanted: root.ui.hovering && !root.peekLine.onShow
        onWantedChanged: {
            if (wanted)
                setSource("HoverPeekRow.qml", {
                    strip: root.strip,
                    ui: root.ui
                });
            else
                source = "";
        }
    }
}
