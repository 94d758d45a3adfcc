import QtQuick
import Velto.Design
import Velto.Settings

/// The tab of a pane: its symbol over its name.
ButtonBase {
    id: root

    required property PaneInfo info
    required property bool selected
    readonly property color ink: !root.selected ? root.palette.windowText : root.palette.window.hslLightness > 0.5
                                                  ? Qt.darker(root.palette.highlight, 1.6) : Qt.lighter(root.palette.highlight, 1.25)

    label: root.info.title
    ringed: false
    implicitWidth: Math.ceil(Math.max(76, name.implicitWidth + 20))
    implicitHeight: symbol.height + name.implicitHeight + 16
    Accessible.role: Accessible.PageTab
    Accessible.selected: root.selected

    Rectangle {
        anchors.fill: parent
        radius: 7
        color: root.selected ? Qt.alpha(root.palette.highlight, 0.16)
                             : Qt.alpha(root.palette.windowText, root.pressed ? 0.12 : root.hovered ? 0.06 : 0)
        border.width: root.activeFocus ? 2 : 0
        border.color: root.palette.highlight
    }
    Symbol {
        id: symbol

        anchors.horizontalCenter: parent.horizontalCenter
        y: 6
        name: root.info.symbol
        size: 16 * name.growth
        color: root.ink
    }
    FormText {
        id: name

        anchors.horizontalCenter: parent.horizontalCenter
        y: symbol.height + 10
        wrapMode: Text.NoWrap
        text: root.info.title
        color: root.ink
        Accessible.ignored: true
    }
}
