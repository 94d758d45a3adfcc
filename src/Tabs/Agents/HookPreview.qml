import QtQuick
import Velto.Agents
import Velto.Design

// What connecting writes into Claude Code's settings, for the user to agree to.
Sheet {
    id: root

    required property AgentsSource source

    signal done

    title: qsTr("Add these hooks to Claude Code?")
    onCancelled: root.done()

    PlainText {
        id: told

        width: parent.width
        multiline: true
        text: qsTr("Velto adds this to ~/.claude/settings.json and keeps your other settings and hooks. A backup is saved first, and Disconnect removes it again.")
        color: Theme.glassSecondary
        lineHeight: 1.15
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    PlainText {
        id: proxy

        width: parent.width
        visible: root.source.goesPastProxy
        multiline: true
        text: qsTr("Your shell sets a proxy that would take these calls, so they go past it: --noproxy 127.0.0.1.")
        color: Theme.amber
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    RoundedBox {
        width: parent.width
        // As high as the panel allows.
        height: Math.min(code.height + 20, Math.max(72, root.height - 130 - told.height - (proxy.visible ? proxy.height : 0) - buttons.height))
        radius: Theme.radiusRow
        color: Theme.at("black", 0.45)
        edge: code.activeFocus ? 2 : 1
        edgeColor: code.activeFocus ? Theme.ice : Theme.at("white", 0.08)
        clip: true

        Flickable {
            id: area

            anchors.fill: parent
            anchors.margins: 10
            contentWidth: code.width
            contentHeight: code.height
            boundsBehavior: Flickable.StopAtBounds
            clip: true

            function follow(cursor: rect): void {
                if (cursor.y < area.contentY)
                    area.contentY = cursor.y;
                else if (cursor.y + cursor.height > area.contentY + area.height)
                    area.contentY = cursor.y + cursor.height - area.height;
            }

            TextEdit {
                id: code

                width: area.width
                readOnly: true
                selectByMouse: true
                persistentSelection: true
                textFormat: TextEdit.PlainText
                selectByKeyboard: true
                wrapMode: TextEdit.Wrap
                text: root.source.previewText
                color: Theme.glassSecondary
                selectionColor: Theme.at(Theme.ice, 0.4)
                selectedTextColor: "white"
                font.family: Theme.fixedFamily
                font.pixelSize: Math.round(Theme.textSmall * Theme.textScale)
                onTextChanged: lines.apply()
                Component.onCompleted: lines.apply()

                FontMetrics {
                    id: letters

                    font: code.font
                }
                HangingIndent {
                    id: lines

                    document: code.textDocument
                    indent: 4 * letters.averageCharacterWidth
                    leading: 2
                }

                activeFocusOnTab: true
                Accessible.role: Accessible.EditableText
                Accessible.readOnly: true
                Accessible.name: qsTr("What is added")
                onCursorRectangleChanged: area.follow(cursorRectangle)
                Keys.onEscapePressed: root.done()
            }
        }
        ScrollThumb {
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            anchors.margins: 4
            area: area
        }
    }
    Row {
        id: buttons

        anchors.right: parent.right
        spacing: 8

        PillButton {
            text: qsTr("Cancel")
            tint: "white"
            onClicked: root.done()
        }
        PillButton {
            text: qsTr("Add hooks")
            focus: true
            onClicked: {
                root.source.installHooks();
                root.done();
            }
        }
    }
}
