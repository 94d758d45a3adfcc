import QtQuick
import Velto.Settings

SettingsPane {
    id: root

    required property SettingsStore store
    readonly property TokenSettings tokens: root.store.tokens

    Component.onCompleted: root.tokens.reread()
    onReturned: root.tokens.reread()
    // What was typed is kept, however the field is left.
    Component.onDestruction: root.tokens.readAnew()

    Connections {
        target: root.Window.window
        function onVisibleChanged(): void {
            if (!root.Window.window.visible)
                root.tokens.readAnew();
        }
    }
    FormSection {
        visible: root.tokens.locked

        FormRow {
            title: qsTr("The keyring is locked.")
            note: qsTr("Unlock it to see what is saved.")

            FormButton {
                text: qsTr("Unlock…")
                onClicked: root.tokens.unlock()
            }
        }
    }
    FormSection {
        title: qsTr("Linear")
        footer: qsTr("Linear → Settings → Security & access → Personal API keys.")

        TokenRow {
            tokens: root.tokens
            name: "Velto.linear"
            label: qsTr("Linear API key")
        }
    }
    FormSection {
        title: qsTr("Jira")
        footer: qsTr("%1 → Security → API tokens.").arg("id.atlassian.com/manage-profile")

        FormRow {
            title: qsTr("Site")

            Field {
                width: jiraToken.extent
                label: qsTr("Site")
                placeholderText: "your-team.atlassian.net"
                stored: root.tokens.jiraSite
                onTyped: text => root.tokens.jiraSite = text
                onEditingFinished: root.tokens.readAnew()
            }
        }
        FormRow {
            title: qsTr("Email")

            Field {
                width: jiraToken.extent
                label: qsTr("Email")
                placeholderText: "you@example.com"
                inputMethodHints: Qt.ImhEmailCharactersOnly
                stored: root.tokens.jiraEmail
                onTyped: text => root.tokens.jiraEmail = text
                onEditingFinished: root.tokens.readAnew()
            }
        }
        TokenRow {
            id: jiraToken

            tokens: root.tokens
            name: "Velto.jira"
            label: qsTr("API token")
        }
    }
    FormSection {
        title: qsTr("Slack")
        footer: qsTr("A user token with the search:read scope, from a Slack app you create for your workspace.")

        TokenRow {
            tokens: root.tokens
            name: "Velto.slack"
            label: qsTr("User token (xoxp-…)")
        }
    }
    FormText {
        width: parent.width
        quiet: true
        text: qsTr("Tokens are stored in your Mac's Keychain and sent only to that service, over HTTPS. Turn on \"Linear, Jira and Slack\" in Modules to see them in the velto.")
    }
}
