import QtQuick
import Velto.Design
import Velto.Home

// The one session that matters most right now.
GlassCard {
    id: root

    required property HomeSpotlight spotlight

    readonly property color tone: root.spotlight.working ? Theme.mint : Theme.amber

    tint: root.tone
    spacing: Theme.gap

    Item {
        width: parent.width
        height: heading.implicitHeight

        Row {
            spacing: Math.round(6 * Theme.textScale)

            Symbol {
                anchors.verticalCenter: heading.verticalCenter
                name: "sparkles"
                size: Theme.textSmall
                color: root.tone
            }
            PlainText {
                id: heading

                text: qsTr("CLAUDE CODE")
                size: Theme.textTiny
                weight: Font.DemiBold
                color: Theme.glassSecondary
                font.letterSpacing: 0.8
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
        }
        PlainText {
            anchors.right: parent.right
            y: heading.baselineOffset - baselineOffset
            text: root.spotlight.age
            size: Theme.textSmall
            color: Theme.glassTertiary
            Accessible.ignored: true
        }
    }
    Item {
        id: body

        width: parent.width
        height: words.implicitHeight
        Accessible.role: Accessible.StaticText
        Accessible.name: Plain.line(root.spotlight.spoken)

        Column {
            id: words

            width: (view.visible ? view.x - Theme.gapSection : parent.width)
            spacing: 3

            Row {
                id: line

                width: parent.width
                spacing: Theme.gap

                PlainText {
                    id: title

                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(implicitWidth, line.width - state.implicitWidth - dot.width - 2 * line.spacing)
                    words: root.spotlight.title
                    size: Theme.textLarge
                    weight: Font.DemiBold
                    Accessible.ignored: true
                }
                LiveDot {
                    id: dot

                    anchors.verticalCenter: parent.verticalCenter
                    diameter: 6 * Theme.textScale
                    color: root.tone
                    live: root.spotlight.working && root.visible
                }
                PlainText {
                    id: state

                    anchors.baseline: title.baseline
                    text: root.spotlight.stateText
                    size: Theme.textSmall
                    weight: Font.Medium
                    color: root.tone
                    Accessible.ignored: true
                }
            }
            PlainText {
                width: parent.width
                visible: root.spotlight.detail !== ""
                words: root.spotlight.detail
                size: Theme.textBody
                color: Theme.glassSecondary
                Accessible.ignored: true
            }
        }
        PillButton {
            id: view

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: root.spotlight.canResume
            text: qsTr("View session")
            label: qsTr("View session: %1").arg(root.spotlight.title.slice(0, 200))
            help: hovered || activeFocus ? root.spotlight.terminalName() : ""
            tint: root.tone
            onClicked: root.spotlight.resume()
        }
    }
}
