pragma ComponentBehavior: Bound

import QtQuick
import Velto.Design

/// One of a few choices, side by side. Tab stops at it once; Left and Right choose.
Item {
    id: root

    /// What a screen reader says before the choice.
    required property string title
    /// Whether the title is also shown before the choice.
    property bool titled: false
    /// A model whose rows have value, text and selected.
    required property var options

    property Item current: null
    readonly property real start: root.titled ? heading.implicitWidth + 8 : 0

    signal chosen(string value)

    implicitWidth: root.start + row.implicitWidth + 4
    implicitHeight: Theme.controlHeight
    Accessible.role: Accessible.Grouping
    Accessible.name: root.title

    function at(index: int): var {
        return repeater.itemAt(index);
    }
    function choose(index: int): void {
        const segment = root.at(Math.max(0, Math.min(index, repeater.count - 1)));
        if (root.current?.activeFocus)
            segment.forceActiveFocus(Qt.TabFocusReason);
        capsule.glides = true;
        root.chosen(segment.value);
    }

    component Segment: ButtonBase {
        id: segment

        required property int index
        required property string value
        required property string text
        required property bool selected

        label: segment.text
        corner: segment.height / 2
        takesReturn: false
        // A focused segment must stay in the tab order until the focus has moved on.
        activeFocusOnTab: segment.selected || segment.activeFocus || (segment.index === 0 && root.current === null)
        implicitWidth: words.implicitWidth + Math.round(24 * Theme.textScale)
        implicitHeight: Theme.controlHeight - 4
        Accessible.role: Accessible.RadioButton
        Accessible.checkable: true
        Accessible.checked: segment.selected
        Accessible.onToggleAction: segment.clicked()
        Keys.onLeftPressed: root.choose(segment.index - 1)
        Keys.onRightPressed: root.choose(segment.index + 1)
        onClicked: root.choose(segment.index)
        onSelectedChanged: segment.claim()
        Component.onCompleted: segment.claim()

        function claim(): void {
            if (segment.selected)
                root.current = segment;
            else if (root.current === segment)
                root.current = null;
        }

        RoundedBox {
            anchors.fill: parent
            radius: segment.corner
            visible: !segment.selected && (segment.pressed || segment.hovered)
            color: Theme.at("white", segment.pressed ? 0.12 : 0.07)
        }
        PlainText {
            id: words

            anchors.centerIn: parent
            words: segment.text
            weight: Font.Medium
            color: segment.selected ? Theme.accentStrong : segment.hovered ? Theme.glassPrimary : Theme.glassSecondary
            Accessible.ignored: true
        }
    }

    PlainText {
        id: heading

        anchors.verticalCenter: parent.verticalCenter
        visible: root.titled
        text: root.title
        color: Theme.glassSecondary
        Accessible.ignored: true
    }
    RoundedBox {
        x: root.start
        width: root.width - x
        height: root.height
        radius: root.height / 2
        color: Theme.at("black", 0.28)
        edge: 1
        edgeColor: Theme.at("white", 0.14)
    }
    SelectionCapsule {
        id: capsule

        row: row
        target: root.current
        glides: false
    }
    Row {
        id: row

        x: root.start + 2
        y: 2

        Repeater {
            id: repeater

            model: root.options

            Segment {}
        }
    }
}
