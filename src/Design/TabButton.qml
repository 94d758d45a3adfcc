import QtQuick
import Velto.Design

/// A tab of the panel: symbol, title and, above 0, its badge. The capsule behind the selected one is a SelectionCapsule of
/// the row, since it glides between the tabs.
ButtonBase {
    id: root

    required property string title
    required property string symbol
    property int badge: 0
    property bool selected: false
    /// Shows the symbol alone where there is no room, with the title as its help text.
    property bool bare: false

    /// Its width with the title.
    readonly property real whole: 2 * root.side + mark.width + row.spacing + name.implicitWidth + (root.badge > 0 ? row.spacing + pad.width : 0)
    readonly property real side: Math.round(10 * Theme.textScale)
    readonly property color ink: root.selected ? Theme.accentStrong : root.hovered ? Theme.glassPrimary : Theme.glassSecondary

    label: root.badge > 0 ? root.title + ", " + root.badge : root.title
    help: root.bare ? root.title : ""
    corner: root.height / 2
    implicitWidth: row.implicitWidth + 2 * root.side
    implicitHeight: Math.max(row.implicitHeight, 16) + 12
    Accessible.role: Accessible.PageTab
    Accessible.selected: root.selected

    RoundedBox {
        anchors.fill: parent
        radius: root.corner
        visible: !root.selected && (root.pressed || root.hovered)
        color: Theme.at("white", root.pressed ? 0.12 : 0.07)
    }

    Row {
        id: row

        anchors.centerIn: parent
        anchors.alignWhenCentered: false
        spacing: Theme.gapTight

        Symbol {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            name: root.symbol
            color: root.ink
        }
        PlainText {
            id: name

            anchors.verticalCenter: parent.verticalCenter
            visible: !root.bare
            words: root.title
            color: root.ink
            weight: Font.Medium
            Accessible.ignored: true
        }
        RoundedBox {
            id: pad

            readonly property int usual: Math.round(15 * Theme.textScale)

            anchors.verticalCenter: parent.verticalCenter
            visible: root.badge > 0
            width: Math.max(height, count.implicitWidth + 8)
            // Even or odd as the row is, so that both have the same middle.
            height: usual + Math.abs(Math.round(Math.max(mark.height, name.height)) - usual) % 2
            radius: height / 2
            color: Theme.at(root.ink, 0.18)

            PlainText {
                id: count

                anchors.centerIn: parent
                text: root.badge
                size: Theme.textTiny
                weight: Font.DemiBold
                color: root.ink
                Accessible.ignored: true
            }
        }
    }
}
