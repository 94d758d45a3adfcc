import QtQuick
import QtQuick.Controls.Fusion
import Velto.Design
import Velto.Settings

/// A check box over the whole row, with a note after its label and perhaps a link.
Item {
    id: root

    required property string label
    property string note
    property string link
    required property bool ticked
    /// How much larger the desktop's letters are than those the box was drawn for.
    readonly property real growth: Math.max(1, box.font.pixelSize / 13)
    readonly property bool first: root.parent?.visibleChildren[0] === root

    signal wanted(bool on)
    signal followed

    implicitHeight: box.implicitHeight

    Separator {
        visible: !root.first
        x: 12
        width: parent.width - 13 // up to the card's edge
        ink: Qt.alpha(root.palette.windowText, 0.1)
    }
    CheckBox {
        id: box

        x: 6
        width: root.width - x - (more.visible ? more.width + 14 : 6)
        padding: 6
        spacing: 9
        text: root.label.replace(/&/g, "&&")
        checked: root.ticked
        Accessible.role: Accessible.CheckBox
        Accessible.name: root.label
        Accessible.checkable: true
        Accessible.checked: box.checked
        Accessible.description: root.note
        Accessible.onPressAction: root.wanted(!root.ticked)
        Accessible.onToggleAction: root.wanted(!root.ticked)
        onToggled: {
            const wish = box.checked;
            box.checked = Qt.binding(() => root.ticked);
            root.wanted(wish);
        }

        indicator: RoundedBox {
            implicitWidth: 4 * Math.round(4 * root.growth) // whole device pixels at scales in quarters
            implicitHeight: implicitWidth
            x: box.leftPadding
            y: (box.height - height) / 2
            radius: 5 * root.growth
            color: box.checked ? root.palette.highlight : root.palette.base
            edge: box.checked ? 0 : 1
            edgeColor: Qt.alpha(root.palette.windowText, box.hovered ? 0.65 : 0.45)

            Symbol {
                anchors.centerIn: parent
                visible: box.checked
                name: "checkmark"
                size: 10 * root.growth
                color: root.palette.highlightedText
            }
            RoundedBox {
                anchors.fill: parent
                // Keeps apart from a fill of the same colour.
                anchors.margins: box.checked ? -4 : -2
                visible: box.visualFocus
                radius: 5 * root.growth - anchors.margins
                edge: 2
                edgeColor: root.palette.highlight
            }
        }
        contentItem: TickLabel {
            indent: box.indicator.width + 9
            label: root.label
            note: root.note
        }
    }
    FormButton {
        id: more

        anchors.right: parent.right
        anchors.rightMargin: 12 - rightPadding
        anchors.verticalCenter: parent.verticalCenter
        visible: root.link !== ""
        flat: true
        leftPadding: 8
        rightPadding: 8
        text: root.link
        onClicked: root.followed()
    }
}
