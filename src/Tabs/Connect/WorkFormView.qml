pragma ComponentBehavior: Bound

import QtQuick
import Velto.Connect
import Velto.Design

// The tokens of the work tools, and the ways to keep in touch with customers.
GlassCard {
    id: root

    required property ConnectSource source

    spacing: 8

    SectionLabel {
        text: qsTr("Work and outreach")
        topPadding: 0
    }
    Item {
        width: parent.width
        implicitHeight: unlock.implicitHeight
        visible: root.source.tokens.locked

        PlainText {
            anchors.left: parent.left
            anchors.right: unlock.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("The keyring is locked.")
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        PillButton {
            id: unlock

            anchors.right: parent.right
            text: qsTr("Unlock…")
            onClicked: root.source.tokens.unlock()
        }
    }
    TokenField {
        source: root.source
        name: "Velto.linear"
        title: qsTr("Linear API key")
    }
    TokenField {
        source: root.source
        name: "Velto.jira"
        title: qsTr("Jira API token")
    }
    Row {
        id: jira

        width: parent.width
        spacing: 8

        TextInputField {
            width: (jira.width - 8) / 2
            named: true
            label: qsTr("Jira email")
            prompt: qsTr("Jira email")
            text: root.source.tokens.jiraEmail
            onEdited: text => root.source.tokens.jiraEmail = text
            onFinished: root.source.tokens.readAnew()
        }
        TextInputField {
            width: (jira.width - 8) / 2
            named: true
            label: qsTr("Jira site")
            prompt: qsTr("Jira site (%1)").arg("your-team.atlassian.net")
            text: root.source.tokens.jiraSite
            onEdited: text => root.source.tokens.jiraSite = text
            onFinished: root.source.tokens.readAnew()
        }
    }
    TokenField {
        source: root.source
        name: "Velto.slack"
        title: qsTr("Slack user token (xoxp-…, search:read)")
    }
    PlainText {
        width: parent.width
        multiline: true
        text: qsTr("Tokens stay in your Mac's Keychain and go only to that service, over HTTPS.")
        size: Theme.textSmall
        color: Theme.glassTertiary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    SectionLabel {
        text: qsTr("BDR follow-ups")
    }
    PlainText {
        width: parent.width
        multiline: true
        text: qsTr("Keep outreach in local Velto todos now, or connect a CRM through MCP. Email is never read automatically; replies open as drafts for approval.")
        size: Theme.textSmall
        color: Theme.glassSecondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Row {
        spacing: 8

        PillButton {
            symbol: "person.crop.circle.badge.checkmark"
            text: qsTr("Add follow-up")
            onClicked: root.source.addFollowUp()
        }
        PillButton {
            text: qsTr("CRM via MCP")
            onClicked: root.source.openMcpForm()
        }
    }
    Repeater {
        model: root.source.salesConnectors

        Item {
            id: connector

            required property string name
            required property string symbol

            width: parent?.width ?? 0
            height: 34 * Theme.textScale

            Symbol {
                id: mark

                anchors.verticalCenter: parent.verticalCenter
                name: connector.symbol
                color: Theme.glassSecondary
            }
            Column {
                anchors.left: mark.right
                anchors.leftMargin: 10
                anchors.right: link.left
                anchors.rightMargin: 10
                anchors.verticalCenter: parent.verticalCenter

                PlainText {
                    text: connector.name
                    weight: Font.Medium
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                PlainText {
                    width: parent.width
                    text: qsTr("Connect explicitly through an HTTPS MCP server. Velto never reads this account automatically.")
                    size: Theme.textSmall
                    color: Theme.glassTertiary
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
            PillButton {
                id: link

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Connect")
                label: qsTr("Connect %1").arg(connector.name)
                onClicked: root.source.connectSales(connector.name)
            }
        }
    }
}
