import QtQuick
import Velto.Design

// Explains once what a copied link does here.
GlassCard {
    id: root

    signal useCopiedLink
    signal dismissed

    Item {
        width: parent.width
        height: Math.max(words.implicitHeight, actions.implicitHeight)

        Column {
            id: words

            width: actions.x - Theme.gapSection
            spacing: 3

            PlainText {
                width: parent.width
                text: qsTr("Glances")
                size: Theme.textTitle
                weight: Font.DemiBold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            PlainText {
                width: parent.width
                text: qsTr("Copy a link and it shows up here: play a video without leaving your work, or open a pull request in one click.")
                size: Theme.textBody
                color: Theme.glassSecondary
                multiline: true
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        Row {
            id: actions

            anchors.right: parent.right
            anchors.rightMargin: -close.overhang
            anchors.verticalCenter: parent.verticalCenter
            spacing: Math.round(4 * Theme.textScale)

            PillButton {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Use copied link")
                onClicked: root.useCopiedLink()
            }
            IconButton {
                id: close

                anchors.verticalCenter: parent.verticalCenter
                symbol: "xmark"
                label: qsTr("Don't show this again")
                onClicked: root.dismissed()
            }
        }
    }
}
