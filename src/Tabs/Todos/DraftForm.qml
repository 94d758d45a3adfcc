import QtQuick
import Velto.Design
import Velto.Todos

// The form for a new todo or a change to one. It scrolls where there is no room for all of it.
FocusScope {
    id: root

    required property DraftFormStore form
    required property UI ui
    /// The height that is available.
    required property real room

    readonly property int gap: Theme.gap
    /// Return presses its button, wherever in the form the focus is.
    readonly property bool takesReturn: true
    readonly property bool calendarOpen: date.opened
    readonly property bool panelOpen: root.ui.expanded

    implicitHeight: Math.min(column.height + 2 * column.y, root.room)
    Accessible.role: Accessible.Form
    Accessible.name: qsTr("Todo")
    Keys.onReturnPressed: root.form.save()
    Keys.onEnterPressed: root.form.save()

    // The calendar lies over the panel, which stays open under it; if the panel closes all the same, so does the calendar.
    onCalendarOpenChanged: root.calendarOpen ? root.ui.sheetOpened() : root.ui.sheetClosed()
    onPanelOpenChanged: {
        if (!root.panelOpen)
            date.close();
    }
    Component.onDestruction: {
        if (root.calendarOpen)
            root.ui.sheetClosed();
    }

    Connections {
        target: root.form
        function onTitleFocusWanted(): void {
            title.input.forceActiveFocus(Qt.OtherFocusReason);
        }
        function onDateFocusWanted(): void {
            date.focusAll();
        }
    }
    // Keeps the focused field in sight.
    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged(): void {
            area.follow(root.Window.window.activeFocusItem);
        }
    }

    RoundedBox {
        anchors.fill: parent
        radius: Theme.radiusCard
        edge: Theme.cardEdge
        edgeColor: "white"
        color: Theme.at("white", 0.08)
    }

    Flickable {
        id: area

        anchors.fill: parent
        clip: contentHeight > height
        interactive: contentHeight > height
        contentHeight: column.height + 2 * column.y
        boundsBehavior: Flickable.StopAtBounds

        function follow(item: Item): void {
            let inside = false;
            for (let at = item; at && !inside; at = at.parent)
                inside = at === column;
            if (!inside)
                return;
            const top = item.mapToItem(column, 0, 0).y + column.y;
            contentY = Math.max(0, Math.min(Math.max(contentY, top + item.height + 14 - height), top - 14));
        }

        Column {
            id: column

            x: Theme.gapSection
            y: Theme.gapSection
            width: area.width - 2 * x
            spacing: root.gap

            TextInputField {
                id: title

                width: parent.width
                focus: true
                label: qsTr("Todo title")
                prompt: qsTr("What needs doing?")
                text: root.form.title
                onEdited: text => root.form.title = text
            }
            Row {
                visible: root.form.more
                width: parent.width
                spacing: root.gap

                TextInputField {
                    width: (parent.width - root.gap) / 2
                    named: true
                    label: qsTr("Who (optional)")
                    prompt: qsTr("Who (optional)")
                    text: root.form.who
                    onEdited: text => root.form.who = text
                }
                TextInputField {
                    width: (parent.width - root.gap) / 2
                    named: true
                    label: qsTr("Project (optional)")
                    prompt: qsTr("Project (optional)")
                    text: root.form.project
                    onEdited: text => root.form.project = text
                }
            }
            TextAreaField {
                visible: root.form.more
                width: parent.width
                label: qsTr("Notes (optional)")
                prompt: qsTr("Notes (optional)")
                text: root.form.details
                onEdited: text => root.form.details = text
                onSubmitted: root.form.save()
            }
            // Side by side if there is room.
            Flow {
                x: -2 // aligns the box with the fields
                width: parent.width + 2
                spacing: 2 * root.gap

                Row {
                    height: Theme.controlHeight
                    spacing: root.gap

                    CheckField {
                        text: qsTr("Due")
                        checked: root.form.hasDate
                        onToggled: checked => root.form.hasDate = checked
                    }
                    DateField {
                        id: date

                        visible: root.form.hasDate
                        label: qsTr("Due date")
                        date: root.form.date // qmllint disable type
                    }
                }
                SegmentedControl {
                    title: qsTr("Priority")
                    titled: true
                    options: root.form.priorities
                    onChosen: value => root.form.choosePriority(value)
                }
                SegmentedControl {
                    visible: root.form.showsScope
                    title: qsTr("List")
                    titled: true
                    options: root.form.scopes
                    onChosen: value => root.form.chooseScope(value)
                }
            }
            Item {
                width: parent.width
                height: 24 * Theme.textScale

                PlainButton {
                    x: -6
                    anchors.verticalCenter: parent.verticalCenter
                    text: root.form.moreText
                    symbol: root.form.more ? "chevron.up" : "chevron.down"
                    onClicked: root.form.toggleMore()
                }
                Row {
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: root.gap

                    PillButton {
                        text: qsTr("Cancel")
                        tint: "white"
                        onClicked: root.form.cancel()
                    }
                    PillButton {
                        text: root.form.saveText
                        primary: true
                        onClicked: root.form.save()
                    }
                }
            }
        }
    }
    ScrollThumb {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.topMargin: 12
        anchors.bottomMargin: 12
        area: area
    }
}
