import QtQuick
import Velto.Design

/// A dialog over the whole panel: what is behind is dimmed and can't be pressed, Escape cancels, Tab stays inside.
FocusScope {
    id: root

    /// The item whose window it covers.
    required property Item target
    required property string title
    property string symbol
    property real padding: Math.round(20 * Theme.textScale)
    /// What is at the end of the title's line.
    property alias actions: actions.data
    default property alias content: column.data

    signal cancelled

    /// See TabOrder.
    readonly property bool trapsFocus: true
    /// Set once: a binding would move this item out of a window that is being destroyed.
    property Item scene: null
    property Item before: null

    parent: root.scene
    anchors.fill: parent
    z: 800
    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: root.title
    Keys.onEscapePressed: root.cancelled()
    Component.onCompleted: {
        root.scene = root.target.Window.contentItem;
        root.before = root.target.Window.activeFocusItem;
        root.forceActiveFocus();
    }
    Component.onDestruction: root.before?.forceActiveFocus()

    // The panel's own outline: its top corners are above the window.
    RoundedBox {
        x: 14
        y: -40
        width: parent.width - 28
        height: parent.height + 40
        radius: 26
        color: Theme.at("black", 0.62)
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: wheel => wheel.accepted = true
    }

    RoundedBox {
        anchors.centerIn: parent
        width: Math.min(640 * Theme.textScale, parent.width - 56)
        height: column.height + 2 * root.padding
        radius: 18
        color: Theme.sheet
        edge: 1
        edgeColor: Theme.at("white", 0.12)

        Column {
            id: column

            x: root.padding
            y: root.padding
            width: parent.width - 2 * root.padding
            spacing: Theme.paddingCard

            Item {
                width: parent.width
                height: Math.max(heading.height, actions.height)

                Row {
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: Theme.gap

                    Symbol {
                        anchors.verticalCenter: parent.verticalCenter
                        visible: root.symbol !== ""
                        name: root.symbol
                        color: Theme.ice
                    }
                    PlainText {
                        id: heading

                        width: Math.min(implicitWidth, column.width - actions.width - (root.symbol === "" ? 0 : 20 * Theme.textScale + Theme.gap) - Theme.gap)
                        multiline: true
                        words: root.title
                        size: Theme.textLarge
                        weight: Font.DemiBold
                        Accessible.role: Accessible.Heading
                        Accessible.name: text
                    }
                }
                Row {
                    id: actions

                    anchors.right: parent.right
                    spacing: Math.round(6 * Theme.textScale)
                }
            }
        }
    }
}
