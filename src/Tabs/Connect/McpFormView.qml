pragma ComponentBehavior: Bound

import QtQuick
import Velto.Connect
import Velto.Design

// The MCP servers that Claude Code knows, and a form to add one.
GlassCard {
    id: root

    required property McpForm form

    spacing: 8

    Item {
        width: parent.width
        height: heading.implicitHeight

        SectionLabel {
            id: heading

            text: qsTr("MCP connectivity")
            topPadding: 0
        }
        PillButton {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Retry all")
            onClicked: root.form.retryAll()
        }
    }
    Repeater {
        // Hidden, a hundred rows would only hold up a frame.
        model: root.visible ? root.form.servers : null

        Item {
            id: server

            required property string name
            required property string detail
            required property string status
            required property string statusText
            required property string actionLabel
            readonly property color tone: server.status === "ok" ? Theme.mint : server.status === "auth" ? Theme.amber : Theme.coral

            width: parent?.width ?? 0
            height: 36 * Theme.textScale
            Accessible.role: Accessible.ListItem
            Accessible.name: Plain.line(server.name + ", " + server.statusText + ", " + server.detail)

            LiveDot {
                id: dot

                anchors.verticalCenter: parent.verticalCenter
                diameter: 6 * Theme.textScale
                color: server.tone
                live: false
            }
            Column {
                anchors.left: dot.right
                anchors.leftMargin: 10
                anchors.right: actions.left
                anchors.rightMargin: 10
                anchors.verticalCenter: parent.verticalCenter

                PlainText {
                    width: parent.width
                    words: server.name
                    weight: Font.Medium
                    Accessible.ignored: true
                }
                PlainText {
                    width: parent.width
                    words: server.detail
                    size: Theme.textSmall
                    color: Theme.glassTertiary
                    elide: Text.ElideMiddle
                    Accessible.ignored: true
                }
            }
            Row {
                id: actions

                anchors.right: parent.right
                anchors.rightMargin: -copy.overhang
                anchors.verticalCenter: parent.verticalCenter
                spacing: 6

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: server.actionLabel === ""
                    name: "checkmark"
                    size: Theme.textSmall
                    color: Theme.ink(server.tone)
                }
                PlainText {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: server.actionLabel === ""
                    text: server.statusText
                    size: Theme.textSmall
                    color: Theme.ink(server.tone)
                    Accessible.ignored: true
                }
                PillButton {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: server.actionLabel !== ""
                    text: server.actionLabel
                    label: server.actionLabel + ": " + server.name.slice(0, 200)
                    tint: server.tone
                    onClicked: root.form.act(server.name)
                }
                IconButton {
                    id: copy

                    anchors.verticalCenter: parent.verticalCenter
                    symbol: "doc.on.doc"
                    label: qsTr("Copy endpoint")
                    onClicked: root.form.copyEndpoint(server.name)
                }
            }
        }
    }
    Row {
        id: fields

        width: parent.width
        spacing: 8

        TextInputField {
            width: 180
            label: qsTr("Server name")
            prompt: qsTr("Server name")
            text: root.form.name
            onEdited: text => root.form.name = text
        }
        TextInputField {
            width: fields.width - 180 - add.width - 16
            named: true
            label: qsTr("HTTPS MCP URL")
            prompt: qsTr("HTTPS MCP URL")
            text: root.form.url
            wrong: root.form.problem !== ""
            onEdited: text => root.form.url = text
            onAccepted: root.form.add()
        }
        PillButton {
            id: add

            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Add")
            label: qsTr("Add the MCP server")
            available: root.form.canAdd
            onClicked: root.form.add()
        }
    }
    PlainText {
        width: parent.width
        visible: root.form.problem !== ""
        text: root.form.problem
        size: Theme.textSmall
        color: Theme.ink(Theme.coral)
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    PlainText {
        width: parent.width
        multiline: true
        text: qsTr("Add and OAuth login open in your chosen terminal so Claude Code remains the source of truth. Velto never stores MCP credentials.")
        size: Theme.textSmall
        color: Theme.glassTertiary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
