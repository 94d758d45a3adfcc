import QtQuick
import Velto.Design
import Velto.Settings

/// The tab of a pane: its symbol over its name. Unlike in the panel, a click takes the focus: what had it may be gone with the
/// previous pane. The ring shows for keys only.
ButtonBase {
    id: root

    required property PaneInfo info
    required property bool selected
    readonly property color ink: !root.selected ? root.palette.windowText : root.palette.window.hslLightness > 0.5
                                                  ? Qt.darker(root.palette.highlight, 1.6) : Qt.lighter(root.palette.highlight, 1.25)

    /// Whether the focus came with a click.
    property bool quiet: false

    label: root.info.title
    ringed: false
    implicitWidth: Math.ceil(Math.max(76, name.implicitWidth + 20))
    implicitHeight: symbol.height + name.implicitHeight + 16
    Accessible.role: Accessible.PageTab
    Accessible.selected: root.selected
    onTapped: {
        root.forceActiveFocus(Qt.MouseFocusReason);
        root.quiet = true;
    }
    // Not the active focus, which comes back with the window.
    onFocusChanged: {
        if (!root.focus)
            root.quiet = false;
    }

    RoundedBox {
        anchors.fill: parent
        radius: 8
        color: root.selected ? Qt.alpha(root.palette.highlight, 0.16)
                             : Qt.alpha(root.palette.windowText, root.pressed ? 0.12 : root.hovered ? 0.06 : 0)
        edge: root.activeFocus && !root.quiet ? 2 : 0
        edgeColor: root.palette.highlight
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
