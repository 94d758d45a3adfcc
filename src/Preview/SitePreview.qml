import QtQuick
import Velto.Design
import Velto.Preview
import Velto.Shell

// The open panel with made-up, unchanging content, for the project's page.
Item {
    id: root

    readonly property list<color> tones: [Theme.coral, Theme.amber, Theme.ice, Theme.glassTertiary]

    width: 780
    height: 520

    VeltoShape {
        anchors.fill: parent
        topRadius: 14
        bottomRadius: 26
        openness: 1
    }

    Item {
        x: 24
        y: 10
        width: root.width - 48
        height: 28

        SelectionCapsule {
            row: tabs
            target: home
        }
        Row {
            id: tabs

            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            TabButton {
                id: home

                title: qsTr("Home")
                symbol: "house"
                badge: 3
                selected: true
            }
            TabButton {
                title: qsTr("Todos")
                symbol: "checklist"
                badge: 4
            }
            TabButton {
                title: qsTr("Agents")
                symbol: "sparkle"
                badge: 2
            }
            TabButton {
                title: qsTr("Connect")
                symbol: "puzzlepiece.extension"
            }
        }
        Row {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            PlainText {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Updated now")
                size: Theme.textSmall
                color: Theme.glassTertiary
            }
            Pill {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Refresh")
                tone: Theme.ice
            }
            Pill {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Pin open")
                tone: Theme.ice
            }
        }
    }

    Column {
        x: 24
        y: 58
        width: root.width - 48
        spacing: Theme.gapSection

        Column {
            spacing: 2

            PlainText {
                text: qsTr("Good afternoon.")
                size: Theme.textTitle
                color: Theme.glassSecondary
            }
            PlainText {
                text: qsTr("3 things need you")
                size: Theme.textHeadline
                weight: Font.DemiBold
                color: Theme.amber
            }
        }
        PreviewGroup {
            heading: qsTr("NEEDS YOU")
            tones: root.tones
            items: [
                {
                    symbol: "hand.raised.fill",
                    tone: 1,
                    title: qsTr("api-server is waiting for you"),
                    detail: qsTr("Allow it to run the migration?"),
                    action: qsTr("Resume")
                },
                {
                    symbol: "calendar",
                    tone: 1,
                    title: qsTr("Design review in 8 min"),
                    detail: qsTr("Google Calendar · 2 events left today"),
                    action: qsTr("Join")
                },
                {
                    symbol: "arrow.triangle.pull",
                    tone: 1,
                    title: qsTr("1 pull request waits for your review"),
                    detail: qsTr("web: Keep the list where it was after a refresh"),
                    action: qsTr("Review")
                }
            ]
        }
        PreviewGroup {
            heading: qsTr("TODAY")
            tones: root.tones
            items: [
                {
                    symbol: "checklist",
                    tone: 2,
                    title: qsTr("4 todos due today"),
                    detail: qsTr("Send the release notes"),
                    action: qsTr("Show")
                },
                {
                    symbol: "music.note",
                    tone: 2,
                    title: qsTr("Nocturne in E-flat"),
                    detail: qsTr("Evening Quartet · Spotify"),
                    action: qsTr("Pause")
                }
            ]
        }
    }
}
