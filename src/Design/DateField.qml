import QtQuick
import Velto.Design

/// A date, typed or picked from a small calendar. Down and the button open the calendar. Whoever keeps the panel open while
/// something lies over it listens to `opened`.
FocusScope {
    id: root

    /// Its name for screen readers.
    required property string label
    required property DateModel date

    readonly property bool opened: calendar.active
    /// Whether the user is changing the text, which then isn't normalised.
    property bool typing: false

    implicitWidth: Math.round(132 * Theme.textScale)
    implicitHeight: Theme.controlHeight

    function focusAll(): void {
        field.focusAll();
    }
    function open(): void {
        root.typing = false;
        root.date.open();
        calendar.active = true;
    }
    function close(): void {
        (calendar.item as Calendar)?.back();
    }
    function show(): void {
        if (!root.typing && field.text !== root.date.text)
            field.text = root.date.text;
    }
    Component.onCompleted: root.show()
    Keys.onDownPressed: root.open()

    Connections {
        target: root.date
        function onChanged(): void {
            if (root.typing && !field.input.activeFocus)
                root.typing = root.date.unreadable;
            root.show();
        }
    }

    TextInputField {
        id: field

        anchors.fill: parent
        focus: true
        label: root.label
        reserved: 20 * Theme.textScale
        wrong: root.typing && root.date.unreadable
        input.Accessible.description: root.date.unreadable ? qsTr("Not a date") : root.date.spoken
        onEdited: text => {
            root.typing = true;
            root.date.type(text);
        }
        onAccepted: root.settle()
    }
    // Normalises what was typed when the focus moves on.
    Connections {
        target: field.input
        function onActiveFocusChanged(): void {
            if (!field.input.activeFocus)
                root.settle();
        }
    }
    function settle(): void {
        if (root.date.unreadable)
            return;
        root.typing = false;
        root.show();
    }

    ButtonBase {
        id: button

        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        width: Math.round(22 * Theme.textScale)
        height: Math.round(20 * Theme.textScale)
        corner: 6
        label: qsTr("Choose a date")
        onClicked: root.open()

        HoverHandler {
            cursorShape: Qt.ArrowCursor
        }
        Symbol {
            anchors.centerIn: parent
            name: "calendar"
            size: Theme.textBody
            color: root.opened ? Theme.ice : button.hovered ? Theme.glassPrimary : Theme.glassSecondary
        }
    }

    Loader {
        id: calendar

        active: false
        // With Qt 6.4 a Loader can't create a bound component.
        // qmllint disable unqualified
        sourceComponent: Calendar {
            target: root
            label: root.label
            date: root.date
            onClosed: calendar.active = false
        }
        // qmllint enable unqualified
    }
}
