import QtQuick
import Velto.Agents
import Velto.Design

// The offer to connect Claude Code's hooks.
GlassCard {
    id: root

    required property AgentsSource source
    required property UI ui

    tint: Theme.ice

    // A property, so that it takes no part in the card's layout.
    readonly property Loader holder: Loader {
        id: sheet

        active: false
        // With Qt 6.4 a Loader can't create a bound component.
        // qmllint disable unqualified
        sourceComponent: HookPreview {
            target: button
            readonly property bool panelOpen: root.ui.expanded

            source: root.source
            onPanelOpenChanged: {
                if (!panelOpen)
                    done();
            }
            onDone: sheet.active = false
        }
        // qmllint enable unqualified
        onActiveChanged: {
            if (!active)
                root.ui.sheetClosed();
        }
    }

    Component.onDestruction: {
        if (sheet.active)
            root.ui.sheetClosed();
    }

    function preview(): void {
        if (sheet.active)
            return;
        root.source.prepareHooks();
        root.ui.sheetOpened();
        sheet.active = true;
    }

    Item {
        width: parent.width
        height: Math.max(words.height, button.height)

        Column {
            id: words

            width: parent.width - button.width - 3 * Theme.gap
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4

            PlainText {
                width: parent.width
                multiline: true
                text: root.source.needsUpgrade ? qsTr("Reconnect live updates") : qsTr("Know the moment an agent finishes")
                size: Theme.textTitle
                weight: Font.DemiBold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            PlainText {
                width: parent.width
                multiline: true
                text: qsTr("Claude Code can tell Velto when an agent is done or needs you, instead of Velto checking every 45 seconds. Nothing leaves this Mac.")
                color: Theme.glassSecondary
                lineHeight: 1.15
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            PlainText {
                width: parent.width
                visible: root.source.needsUpgrade && root.source.goesPastProxy
                multiline: true
                text: qsTr("A proxy that your shell sets takes Claude Code's calls. Reconnecting lets them go past it.")
                color: Theme.amber
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            PlainText {
                width: parent.width
                visible: root.source.hookErrorText !== ""
                multiline: true
                words: root.source.hookErrorText
                color: Theme.ink(Theme.coral)
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        PillButton {
            id: button

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: root.source.needsUpgrade ? qsTr("Reconnect…") : qsTr("Connect…")
            onClicked: root.preview()
        }
    }
}
