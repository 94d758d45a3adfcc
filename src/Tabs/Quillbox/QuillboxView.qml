import QtQuick
import Velto.Design
import Velto.Quillbox

// What the user's memory hub knows: the card of the day, the live sessions, what was heard.
FocusScope {
    id: root

    required property QuillboxSource source
    required property UI ui
    readonly property bool takesArrows: true

    // The arrow keys move from row to row, and from the first one back up to the card.
    function step(by: int): void {
        const to = list.currentIndex + by;
        if (list.count === 0 || to >= list.count)
            return;
        if (to < 0) {
            list.positionViewAtBeginning();
            return;
        }
        list.currentIndex = to;
        list.positionViewAtIndex(to, ListView.Contain);
        list.itemAtIndex(to)?.forceActiveFocus(Qt.TabFocusReason);
    }
    Keys.onDownPressed: root.step(1)
    Keys.onUpPressed: root.step(-1)

    PlainText {
        anchors.left: parent.left
        anchors.right: parent.right
        visible: root.source.local
        multiline: true
        text: qsTr("Todos come straight from the Quillbox database on this Mac. The learning card, live sessions and Tolver need a Quillbox hub (Settings → Quillbox).")
        color: Theme.glassSecondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    // With Qt 6.4 a list's header and footer can't be bound components.
    // qmllint disable unqualified type
    ListView {
        id: list

        anchors.fill: parent
        visible: !root.source.local
        model: root.source.rows
        currentIndex: -1
        keyNavigationEnabled: false
        highlightFollowsCurrentItem: false
        reuseItems: true
        cacheBuffer: 480
        bottomMargin: 28
        boundsBehavior: Flickable.StopAtBounds
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Quillbox")
        section.property: "section"
        section.delegate: Item {
            id: heading

            required property string section

            width: list.width
            height: 34

            SectionLabel {
                anchors.verticalCenter: parent.verticalCenter
                text: heading.section
            }
        }
        // A list at its top stays there when rows are added above.
        property real lastOrigin: 0
        onOriginYChanged: {
            if (contentY <= lastOrigin + 1)
                contentY = originY;
            lastOrigin = originY;
        }

        header: Column {
            width: list.width
            spacing: 8
            topPadding: 2
            bottomPadding: 4

            Row {
                spacing: 6

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    name: root.source.failed ? "exclamationmark.triangle" : "checkmark.circle"
                    color: root.source.failed ? Theme.orange : Theme.glassSecondary
                }
                PlainText {
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(implicitWidth, list.width - 40)
                    words: root.source.modeLabel
                    color: Theme.glassSecondary
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
            StateBanner {
                width: parent.width
                feed: root.source.state
                retryable: true
                onRetryWanted: root.source.fetchAgain()
                onSettingsWanted: root.ui.askForSettings()
            }
            PlainText {
                width: parent.width
                visible: root.source.savedToday !== ""
                multiline: true
                words: root.source.savedToday
                size: Theme.textSmall
                color: Theme.glassTertiary
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            LearningCard {
                width: parent.width
                visible: root.source.hasCard
                source: root.source
            }
        }

        delegate: MemoryRow {
            id: row

            width: list.width
            onActiveFocusChanged: {
                if (activeFocus)
                    list.currentIndex = row.index;
            }
            ListView.onPooled: row.focus = false
        }

        footer: EmptyNote {
            visible: root.source.empty
            height: visible ? 34 : 0
            symbol: "brain"
            text: qsTr("Nothing new in Quillbox right now.")
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    // qmllint enable unqualified type

    ScrollFade {
        area: list
    }
    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: -9
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 28
        visible: list.visible && share < 1
        area: list
    }
}
