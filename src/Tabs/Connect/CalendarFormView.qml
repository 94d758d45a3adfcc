import QtQuick
import Velto.Connect
import Velto.Design

// Where meetings come from.
GlassCard {
    id: root

    required property CalendarForm form
    readonly property bool popupOpen: day.opened

    spacing: 8

    SectionLabel {
        text: qsTr("Meeting source")
        topPadding: 0
    }
    SegmentedControl {
        title: qsTr("Source")
        options: root.form.sources
        onChosen: value => root.form.chooseSource(value)
    }

    Column {
        width: parent.width
        spacing: 8
        visible: root.form.google && !root.form.linked

        PlainText {
            width: parent.width
            multiline: true
            text: qsTr("Shows upcoming events and Google Meet links. Velto requests read-only Calendar access and never reads Gmail or Contacts.")
            color: Theme.glassSecondary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Row {
            spacing: 6

            PillButton {
                text: root.form.connecting ? qsTr("Connecting…") : qsTr("Connect Google Calendar")
                available: !root.form.connecting
                onClicked: root.form.connectGoogle()
            }
            PillButton {
                visible: root.form.connecting
                text: qsTr("Cancel")
                label: qsTr("Cancel connecting Google Calendar")
                tint: "white"
                onClicked: root.form.cancelConnecting()
            }
        }
    }
    Column {
        width: parent.width
        spacing: 6
        visible: root.form.google && root.form.linked

        PlainText {
            text: qsTr("Calendars shown in Velto")
            weight: Font.Medium
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        PlainText {
            visible: root.form.readingCalendars
            text: qsTr("Refreshing your calendar list…")
            color: Theme.glassTertiary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Repeater {
            model: root.form.calendars

            CheckField {
                required property string calendarId
                required property string summary
                required property bool chosen

                text: summary
                checked: chosen
                onToggled: checked => root.form.choose(calendarId, checked)
            }
        }
        Row {
            spacing: 8

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "lock.shield"
                color: Theme.glassSecondary
            }
            PlainText {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Read-only · tokens in Keychain")
                size: Theme.textSmall
                color: Theme.glassSecondary
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            PillButton {
                text: qsTr("Disconnect")
                label: qsTr("Disconnect Google Calendar")
                tint: "white"
                onClicked: root.form.disconnectGoogle()
            }
        }
    }
    PlainText {
        width: parent.width
        visible: root.form.google && root.form.errorText !== ""
        multiline: true
        words: root.form.errorText
        color: Theme.ink(Theme.coral)
        Accessible.role: Accessible.Notification
        Accessible.name: text
    }
    Column {
        width: parent.width
        spacing: 8
        visible: !root.form.google

        TextInputField {
            width: parent.width
            named: true
            label: qsTr("Meeting title")
            prompt: qsTr("Meeting title")
            text: root.form.title
            onEdited: text => root.form.title = text
        }
        Row {
            spacing: 8

            PlainText {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Starts")
                color: Theme.glassSecondary
                Accessible.ignored: true
            }
            DateField {
                id: day

                width: 150
                label: qsTr("Starts on")
                date: root.form.day // qmllint disable type
            }
            TextInputField {
                width: 100
                label: qsTr("Starts at")
                text: root.form.time
                wrong: root.form.timeUnreadable
                onEdited: text => root.form.time = text
            }
        }
        TextInputField {
            width: parent.width
            named: true
            label: qsTr("Join link")
            prompt: qsTr("Join link (Google Meet, Zoom, Teams, or any URL)")
            text: root.form.link
            onEdited: text => root.form.link = text
            onAccepted: root.form.save()
        }
        PlainText {
            width: parent.width
            multiline: true
            text: qsTr("Stored only inside Velto. Mac Calendar and Apple Reminders are never read.")
            size: Theme.textSmall
            color: Theme.glassTertiary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Row {
            spacing: 10

            PillButton {
                text: qsTr("Save")
                label: qsTr("Save the meeting")
                available: !root.form.timeUnreadable
                onClicked: root.form.save()
            }
            PlainText {
                anchors.verticalCenter: parent.verticalCenter
                visible: text !== ""
                text: root.form.doneText
                color: Theme.mint
                Accessible.role: Accessible.Notification
                Accessible.name: text
            }
        }
    }
}
